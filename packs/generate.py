#!/usr/bin/env python3
"""Writes the language packs of this folder from Python's own Unicode character data.

generate.py          writes every pack
generate.py --check  writes nothing; exit status 1 when a pack differs from what would be written

A pack says, for each byte of a code page, whether it is a letter or a digit, how it folds for the
index, and where it sorts; and it names the query language's words. The packs of code pages serve
several languages and come in pairs, the second of which folds accents away too. The packs of
languages have that language's alphabet and query words.
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


LATIN = "abcdefghijklmnopqrstuvwxyz"
# All Slavic languages in one order, in which each keeps its own.
CYRILLIC = "абвгґдђѓеёєжзѕиіїйјклљмнњопрстћќуўфхцчџшщъыьэюя"
UKRAINIAN = "абвгґдеєжзиіїйклмнопрстуфхцчшщьюя"
GREEK = "αβγδεζηθικλμνξοπρστυφχψω"
HEBREW = "אבגדהוזחטיכךלמםנןסעפףצץקרשת"
ARABIC = "ءابپتثجچحخدڈذرڑزژسشصضطظعغفقكکگلمنںهھہوىيے"
TURKISH = "abcçdefgğhıijklmnoöpqrsştuüvwxyz"
VIETNAMESE = "aăâbcdđeêfghijklmnoôơpqrstuưvwxyz"

# Letters whose mark makes another letter of them, not an accented one.
OWN_LETTERS = "йїўѓќ"
# Joins the letters of a word, but is none.
TATWEEL = "\u0640"


@dataclasses.dataclass(frozen=True)
class Pack:
    name: str
    code_page: int  # of Windows, or 65001: UTF-8 byte by byte
    about: str
    alphabet: str = LATIN  # in order; what is not in it sorts with the letters it is written with
    query_words: tuple[str, str, str] = ("AND", "OR", "NOT")
    fold_accents: bool = False

    @property
    def codec(self):
        return "utf-8" if self.code_page == UTF8 else f"cp{self.code_page}"


UTF8 = 65001

CODE_PAGES = [
    Pack("Central-European", 1250, "Central and Southern European languages"),
    Pack("Cyrillic", 1251, "Slavic languages in Cyrillic script", LATIN + CYRILLIC,
         ("И", "ИЛИ", "НЕ")),
    Pack("Western", 1252, "Western European languages"),
    Pack("Greek", 1253, "Greek", LATIN + GREEK, ("ΚΑΙ", "Ή", "ΟΧΙ")),
    Pack("Turkish", 1254, "Turkish", TURKISH, ("VE", "VEYA", "DEĞİL")),
    Pack("Hebrew", 1255, "Hebrew", LATIN + HEBREW, ("וגם", "או", "לא")),
    Pack("Arabic", 1256, "Arabic, Persian and Urdu", LATIN + ARABIC, ("و", "أو", "ليس")),
    Pack("Baltic", 1257, "Baltic languages"),
    Pack("Vietnamese", 1258, "Vietnamese", VIETNAMESE, ("VÀ", "HOĂ\u0323C", "KHÔNG")),
]

LANGUAGES = [
    Pack("Croatian", 1250, "Croatian", "abcčćdđefghijklmnopqrsštuvwxyzž", ("I", "ILI", "NE")),
    Pack("Czech", 1250, "Czech", "abcčdefghijklmnopqrřsštuvwxyzž", ("A", "NEBO", "NE")),
    Pack("Hungarian", 1250, "Hungarian", "abcdefghijklmnoöőpqrstuüűvwxyz", ("ÉS", "VAGY", "NEM")),
    Pack("Polish", 1250, "Polish", "aąbcćdeęfghijklłmnńoópqrsśtuvwxyzźż", ("I", "LUB", "NIE")),
    Pack("Romanian", 1250, "Romanian", "aăâbcdefghiîjklmnopqrsştţuvwxyz", ("ŞI", "SAU", "NU")),
    Pack("Ukrainian", 1251, "Ukrainian", LATIN + UKRAINIAN, ("І", "АБО", "НЕ")),
    Pack("Danish", 1252, "Danish and Norwegian", LATIN + "æøå", ("OG", "ELLER", "IKKE")),
    Pack("Dutch", 1252, "Dutch", LATIN, ("EN", "OF", "NIET")),
    Pack("Finnish", 1252, "Finnish", LATIN + "åäö", ("JA", "TAI", "EI")),
    Pack("French", 1252, "French", LATIN, ("ET", "OU", "SAUF")),
    Pack("German", 1252, "German", LATIN, ("UND", "ODER", "NICHT")),
    Pack("Italian", 1252, "Italian", LATIN, ("E", "O", "NON")),
    Pack("Portuguese", 1252, "Portuguese", LATIN, ("E", "OU", "NÃO")),
    Pack("Spanish", 1252, "Spanish", "abcdefghijklmnñopqrstuvwxyz", ("Y", "O", "NO")),
    Pack("Swedish", 1252, "Swedish", LATIN + "åäö", ("OCH", "ELLER", "INTE")),
    Pack("Estonian", 1257, "Estonian", "abcdefghijklmnopqrsšzžtuvwõäöüxy", ("JA", "VÕI", "EI")),
    Pack("Latvian", 1257, "Latvian", "aābcčdeēfgģhiījkķlļmnņopqrsštuūvwxyzž",
         ("UN", "VAI", "NE")),
    Pack("Lithuanian", 1257, "Lithuanian", "aąbcčdeęėfghiįyjklmnopqrsštuųūvwxzž",
         ("IR", "ARBA", "NE")),
    Pack("UTF-8", UTF8, "Any language in UTF-8, byte by byte: every byte above 127 is a letter"),
]


def without_accents(pack):
    return dataclasses.replace(
        pack, name=pack.name + "-NoAccents", fold_accents=True,
        about=pack.about + "; accented letters are found without their accents")


PACKS = [p for pack in CODE_PAGES for p in (pack, without_accents(pack))] + LANGUAGES


def characters(pack):
    """The character of each byte; None where the code page has none."""
    table = []
    for byte in range(256):
        try:
            table.append(bytes([byte]).decode(pack.codec))
        except UnicodeDecodeError:
            table.append(None)
    return table


def is_mark(char):
    """Whether a character stands inside words as a part of the letter before it."""
    return char is not None and (unicodedata.category(char) == "Mn" or char == TATWEEL)


def is_letter(char):
    # Other modifier letters (Lm) are loose accents, not letters of a word.
    return char is not None and unicodedata.category(char) in ("Lu", "Ll", "Lt", "Lo")


def is_digit(char):
    return char is not None and unicodedata.category(char) == "Nd"


def base_letters(char):
    """The lower-case letters without accents that a letter is written with."""
    plain = unicodedata.normalize("NFKD", char).lower()
    plain = "".join(SORTS_AS.get(c, c) for c in plain)
    return "".join(c for c in plain if not unicodedata.combining(c))


def lower(char, pack):
    if pack.alphabet == TURKISH and char in "Iİ":
        return "ı" if char == "I" else "i"
    # Final forms fold to the ordinary ones: Greek capitals have but one.
    return char.casefold() if len(char.casefold()) == 1 else char.lower()


def folded(char, pack):
    """What a character is indexed as; itself when that is not one character of the code page."""
    result = char
    if is_letter(char):
        result = lower(char, pack)
        if pack.fold_accents and result not in OWN_LETTERS and len(base_letters(char)) == 1:
            result = base_letters(result)
    try:
        encoded = result.encode(pack.codec)
    except UnicodeEncodeError:
        return char
    return result if len(encoded) == 1 else char


def sort_key(byte, char, pack):
    """Controls, white space, punctuation, digits, then letters: by letter, accent, case."""
    if char is None and pack.code_page == UTF8:
        return (5, [byte], "", 0, byte)
    if char is None or unicodedata.category(char) == "Cc" and not char.isspace():
        return (0, [], "", 0, byte)
    if char.isspace():
        return (1, [], "", 0, byte)
    if is_digit(char):
        return (3, [unicodedata.digit(char)], "", 0, byte)
    if is_mark(char):
        return (4, [], "", 0, byte)  # the bare letter comes before one with a mark
    if not is_letter(char):
        return (2, [], "", 0, byte)
    small = lower(char, pack)
    written = small if small in pack.alphabet else base_letters(small)
    places = [pack.alphabet.find(c) if c in pack.alphabet else len(pack.alphabet) + ord(c)
              for c in written]
    # Letters of the alphabet come before those that are written with the same letters.
    accent = "" if written == small else small
    return (5, places, accent, 0 if char == small else 1, byte)


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


def flags(char, pack):
    if char is None:
        return "A" if pack.code_page == UTF8 else None
    if is_letter(char) or is_mark(char):
        return "A"
    return "D" if is_digit(char) else None


def flag_lines(chars, pack):
    return [f"{range_text(first, last)}={letters}"
            for first, last, letters in runs([flags(char, pack) for char in chars])]


def index_lines(chars, pack):
    shifts = []
    for byte, char in enumerate(chars):
        to = byte if char is None else folded(char, pack).encode(pack.codec)[0]
        shifts.append(to - byte or None)
    return [f"{range_text(first, last)}={range_text(first + shift, last + shift)}"
            for first, last, shift in runs(shifts)]


def sort_lines(chars, pack):
    order = sorted(range(1, 256), key=lambda byte: sort_key(byte, chars[byte], pack))
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
    lines += ["[Flags]", *flag_lines(chars, pack), ""]
    lines += ["[Index]", *index_lines(chars, pack), ""]
    lines += ["[Sort]", *sort_lines(chars, pack), ""]
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
        text = pack_text(pack).encode(pack.codec)
        if not check:
            path.write_bytes(text)
        elif not path.exists() or path.read_bytes() != text:
            print(f"{path} differs from what generate.py writes", file=sys.stderr)
            wrong = 1
    return wrong


if __name__ == "__main__":
    sys.exit(main())
