#!/usr/bin/env python3
"""Writes the language packs of this folder from Python's own Unicode character data.

generate.py          writes every pack
generate.py --check  writes nothing; exit status 1 when a pack differs from what would be written

A pack says, for each byte of a code page, whether it is a letter or a digit, how it folds for the
index, and where it sorts; and it names the query language's words.
"""

import argparse
import dataclasses
import pathlib
import sys
import unicodedata

FOLDER = pathlib.Path(__file__).parent

# Letters that have no decomposition in Unicode, and the letters that they sort with.
SORTS_AS = {"æ": "ae", "œ": "oe", "ß": "ss", "ø": "o", "ð": "d", "þ": "th", "đ": "d", "ł": "l",
            "ħ": "h", "ŧ": "t", "ı": "i", "ĸ": "k", "ŋ": "n"}


@dataclasses.dataclass(frozen=True)
class Pack:
    name: str
    codec: str
    code_page: int
    about: str
    fold_accents: bool = False
    query_words: tuple[str, str, str] = ("AND", "OR", "NOT")


PACKS = [
    Pack("Western", "cp1252", 1252, "Western European languages"),
    Pack("Western-NoAccents", "cp1252", 1252,
         "Western European languages; accented letters are found without their accents",
         fold_accents=True),
]


def characters(pack):
    """The character of each byte; None where the code page has none."""
    table = []
    for byte in range(256):
        try:
            table.append(bytes([byte]).decode(pack.codec))
        except UnicodeDecodeError:
            table.append(None)
    return table


def is_letter(char):
    # Modifier letters (Lm) are loose accents, not letters of a word.
    return char is not None and unicodedata.category(char) in ("Lu", "Ll", "Lt", "Lo")


def is_digit(char):
    return char is not None and unicodedata.category(char) == "Nd"


def base_letters(char):
    """The lower-case letters without accents that a letter is written with."""
    plain = unicodedata.normalize("NFKD", char).lower()
    plain = "".join(SORTS_AS.get(c, c) for c in plain)
    return "".join(c for c in plain if not unicodedata.combining(c))


def folded(char, pack):
    """What a character is indexed as; itself when that is not one character of the code page."""
    result = char
    if is_letter(char):
        result = char.lower()
        if pack.fold_accents and len(base_letters(char)) == 1:
            result = base_letters(char)
    try:
        encoded = result.encode(pack.codec)
    except UnicodeEncodeError:
        return char
    return result if len(encoded) == 1 else char


def sort_key(byte, char):
    """Controls, white space, punctuation, digits, then letters: by letter, accent, case."""
    if char is None or unicodedata.category(char) == "Cc" and not char.isspace():
        return (0, "", "", 0, byte)
    if char.isspace():
        return (1, "", "", 0, byte)
    if is_digit(char):
        return (3, char, "", 0, byte)
    if not is_letter(char):
        return (2, "", "", 0, byte)
    lower = char.lower()
    # Plain letters come before those that are written with the same letters.
    written = "" if base_letters(lower) == lower else lower
    return (4, base_letters(lower), written, 0 if char == lower else 1, byte)


def runs(values):
    """Maximal runs (first, last, value) of equal values over bytes 1 to 255, None left out."""
    found = []
    for byte in range(1, 256):
        if values[byte] is None:
            continue
        if found and found[-1][1] == byte - 1 and found[-1][2] == values[byte]:
            found[-1] = (found[-1][0], byte, values[byte])
        else:
            found.append((byte, byte, values[byte]))
    return found


def byte_text(byte):
    return f"'{chr(byte)}'" if 33 <= byte <= 126 else str(byte)


def range_text(first, last):
    return byte_text(first) if first == last else f"{byte_text(first)}-{byte_text(last)}"


def flag_lines(chars):
    flags = ["A" if is_letter(c) else "D" if is_digit(c) else None for c in chars]
    return [f"{range_text(first, last)}={letters}" for first, last, letters in runs(flags)]


def index_lines(chars, pack):
    shifts = []
    for byte, char in enumerate(chars):
        to = byte if char is None else folded(char, pack).encode(pack.codec)[0]
        shifts.append(to - byte or None)
    return [f"{range_text(first, last)}={range_text(first + shift, last + shift)}"
            for first, last, shift in runs(shifts)]


def sort_lines(chars):
    order = sorted(range(1, 256), key=lambda byte: sort_key(byte, chars[byte]))
    weights = {byte: weight for weight, byte in enumerate(order, start=1)}
    shifts = [None] + [weights[byte] - byte or None for byte in range(1, 256)]
    lines = []
    for first, last, shift in runs(shifts):
        if first == last:
            lines.append(f"{byte_text(first)}={weights[first]}")
        else:
            lines.append(f"{range_text(first, last)}{'+' if shift > 0 else '-'}={abs(shift)}")
    return lines


def pack_text(pack):
    chars = characters(pack)
    lines = [f"; {pack.about}.", "; Written by generate.py from Unicode character data.", ""]
    lines += ["[Character Set]", f"Code Page={pack.code_page}", ""]
    lines += ["[Flags]", *flag_lines(chars), ""]
    lines += ["[Index]", *index_lines(chars, pack), ""]
    lines += ["[Sort]", *sort_lines(chars), ""]
    lines += ["[Query Language]"]
    lines += [f"{key}={word}" for key, word in zip(("And", "Or", "Not"), pack.query_words)]
    return "\n".join(lines) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--check", action="store_true", help="compare instead of writing")
    check = parser.parse_args().check
    wrong = 0
    for pack in PACKS:
        path = FOLDER / f"{pack.name}.pack"
        text = pack_text(pack).encode("ascii")
        if not check:
            path.write_bytes(text)
        elif not path.exists() or path.read_bytes() != text:
            print(f"{path} differs from what generate.py writes", file=sys.stderr)
            wrong = 1
    return wrong


if __name__ == "__main__":
    sys.exit(main())
