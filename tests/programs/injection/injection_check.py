#!/usr/bin/env python3
"""Checks that nothing of a document is live in the pages that show it.

Usage: injection_check.py VEMRA

Writes documents that hold hostile markup in their text, attributes, titles and file names, indexes
them, has them shown and listed as pages, also for hostile queries, and reads every page with an
HTML parser that builds the tree as browsers do. Each element, attribute and link of the tree must be
one that the program means to write.
"""
import pathlib
import subprocess
import sys
import tempfile

sys.path.append("/usr/lib/python3/dist-packages")  # Debian's modules, whichever Python this is
import html5lib  # noqa: E402

ELEMENTS = set("""html head meta title style body h1 h2 h3 h4 h5 h6 p div span a abbr acronym address
article aside b bdi bdo big blockquote br caption center cite code col colgroup data dd del details
dfn dir dl dt em figcaption figure font footer header hgroup hr i ins kbd li main mark menu nav nobr
ol pre q s samp section small strike strong sub summary sup table tbody td tfoot th thead time tr tt
u ul var wbr""".split())
ATTRIBUTES = set("""abbr align charset class colspan dir headers href id lang name rowspan scope start
title type valign value""".split())
SCHEMES = {"http", "https", "ftp", "mailto"}

WORD = "needle"  # stands in every document, so that each has a hit to be marked

SCRIPT = "alert(1)"
# Where markup that runs may hide. Each is also put into other contexts below.
MARKUP = [
    f"<script>{SCRIPT}</script>", f"<SCRIPT SRC=//x.invalid/a.js></SCRIPT>", f"<script/x>{SCRIPT}</script>",
    f"<script\n>{SCRIPT}</script\n>", f"<scr<script>ipt>{SCRIPT}</scr</script>ipt>", f"<script>{SCRIPT}",
    f"<img src=x onerror={SCRIPT}>", f"<img/src=x/onerror={SCRIPT}>", f"<img src=`x` onerror={SCRIPT}>",
    f"<img \x00src=x onerror\x0b={SCRIPT}>", f"<image src=x onerror={SCRIPT}>",
    f"<svg onload={SCRIPT}>", f"<svg><script>{SCRIPT}</script></svg>", f"<svg/onload={SCRIPT}//",
    f"<svg><a xlink:href=javascript:{SCRIPT}><text>x</text></a></svg>",
    f"<svg><animate onbegin={SCRIPT} attributeName=x>", f"<svg><use href=data:image/svg+xml,x>",
    f"<math><mi xlink:href=javascript:{SCRIPT}>x</mi></math>",
    f"<math><mtext><table><mglyph><style><img src=x onerror={SCRIPT}></style>",
    f"<iframe src=javascript:{SCRIPT}></iframe>", f"<iframe srcdoc='<script>{SCRIPT}</script>'>",
    f"<object data=javascript:{SCRIPT}></object>", f"<embed src=javascript:{SCRIPT}>",
    f"<applet code=x.class></applet>", f"<base href=javascript:{SCRIPT}//>",
    f"<link rel=stylesheet href=//x.invalid/a.css>", f"<style>@import '//x.invalid/a.css';</style>",
    f"<style>*{{background:url(javascript:{SCRIPT})}}</style>",
    f"<meta http-equiv=refresh content='0;url=javascript:{SCRIPT}'>",
    f"<body onload={SCRIPT}>", f"<body background=javascript:{SCRIPT}>", f"<html onclick={SCRIPT}>",
    f"<frameset onload={SCRIPT}><frame src=javascript:{SCRIPT}>",
    f"<form action=javascript:{SCRIPT}><input type=submit>", f"<input onfocus={SCRIPT} autofocus>",
    f"<button formaction=javascript:{SCRIPT}>x</button>", f"<isindex action=javascript:{SCRIPT}>",
    f"<select onfocus={SCRIPT} autofocus><option>x</select>", f"<textarea onfocus={SCRIPT} autofocus>",
    f"<keygen onfocus={SCRIPT} autofocus>", f"<video src=x onerror={SCRIPT}>",
    f"<video><source onerror={SCRIPT}></video>", f"<audio src=x onerror={SCRIPT}>",
    f"<details open ontoggle={SCRIPT}>x</details>", f"<marquee onstart={SCRIPT}>x</marquee>",
    f"<div style='width:expression({SCRIPT})'>x</div>", f"<div onmouseover='{SCRIPT}'>x</div>",
    f"<p style=\"background:url('javascript:{SCRIPT}')\">x</p>", f"<table background=javascript:{SCRIPT}>",
    f"<td background=javascript:{SCRIPT}>x</td>", f"<template><script>{SCRIPT}</script></template>",
    f"<noscript><p title=\"</noscript><img src=x onerror={SCRIPT}>\"></noscript>",
    f"<xmp><script>{SCRIPT}</script></xmp>", f"<listing>&lt;img src=x onerror={SCRIPT}&gt;</listing>",
    f"<plaintext><script>{SCRIPT}</script>", f"<noembed><img src=x onerror={SCRIPT}></noembed>",
    f"<title><script>{SCRIPT}</script></title>", f"</title><script>{SCRIPT}</script>",
    f"</style><script>{SCRIPT}</script>", f"</pre></body></html><script>{SCRIPT}</script>",
    f"</mark></a><script>{SCRIPT}</script>", f"<!--><script>{SCRIPT}</script>-->",
    f"<!-- --!><script>{SCRIPT}</script>", f"<![CDATA[<script>{SCRIPT}</script>]]>",
    f"<?xml-stylesheet href=javascript:{SCRIPT}?>", f"<!DOCTYPE x [<!ENTITY a '<script>{SCRIPT}'>]>&a;",
    f"&lt;script&gt;{SCRIPT}&lt;/script&gt;", f"&#60;script&#62;{SCRIPT}&#60;/script&#62;",
    f"&amp;lt;script&amp;gt;{SCRIPT}", f"&#x3c;img src=x onerror={SCRIPT}&#x3e;", f"&LT;svg onload={SCRIPT}&GT;",
    f"+ADw-script+AD4-{SCRIPT}+ADw-/script+AD4-", f"\xbcscript\xbe{SCRIPT}\xbc/script\xbe",
    f"\"><script>{SCRIPT}</script>", f"'><script>{SCRIPT}</script>", f"\" onmouseover=\"{SCRIPT}",
    f"' onmouseover='{SCRIPT}", f"` onmouseover={SCRIPT} `", f"x\" style=\"x:expression({SCRIPT})",
    f"<b id=hit1 name=hit2>x</b>", f"<a id=hit1 href=#hit2>x</a>", f"<x-y onclick={SCRIPT}>x</x-y>",
    f"<b/onclick={SCRIPT}>x</b>", f"<b onclick\t=\t{SCRIPT}>x</b>", f"<b ONCLICK={SCRIPT}>x</b>",
    f"<{'b' * 100} onclick={SCRIPT}>", f"<b {'a' * 5000}=1 onclick={SCRIPT}>x",
]
ADDRESSES = [
    f"javascript:{SCRIPT}", f"JavaScript:{SCRIPT}", f" javascript:{SCRIPT}", f"java\tscript:{SCRIPT}",
    f"java\nscript:{SCRIPT}", f"java&#10;script:{SCRIPT}", f"&#106;avascript:{SCRIPT}",
    f"javascript&#58;{SCRIPT}", f"javascript&colon;{SCRIPT}", f"&#x1;javascript:{SCRIPT}",
    f"\x01javascript:{SCRIPT}", f"java\x00script:{SCRIPT}", f"javascript\t:{SCRIPT}",
    f"data:text/html,<script>{SCRIPT}</script>", "data:text/html;base64,PHNjcmlwdD4=",
    f"vbscript:{SCRIPT}", "file:///etc/passwd", f"livescript:{SCRIPT}", f"mocha:{SCRIPT}",
    f"feed:javascript:{SCRIPT}", f"view-source:javascript:{SCRIPT}", f"jar:x!/", "blob:x", "about:blank",
    f"javascript://x.invalid/%0a{SCRIPT}", f"\"javascript:{SCRIPT}\"", f"'javascript:{SCRIPT}'",
    f"&Tab;javascript:{SCRIPT}", f"java&Tab;script:{SCRIPT}", f"x:{SCRIPT}",
]


def contexts():
    """(name, page) of every payload in every place of a page."""
    for i, payload in enumerate(MARKUP):
        yield f"text{i}", f"<title>t</title><p>{WORD} {payload} {WORD}</p>"
        yield f"title{i}", f"<title>{WORD} {payload}</title><p>{WORD}"
        quote = "'" if '"' in payload else '"'
        value = quote + payload.replace(quote, "") + quote
        yield f"attribute{i}", (f"<title>t</title><meta name=author content={value}>"
                                f"<p title={value} id={value}>{WORD}<img alt={value}>")
    for i, address in enumerate(ADDRESSES):
        yield f"link{i}", f"<a href={address}>{WORD}</a><a href=\"{address}\">x {WORD} y</a>"
        yield f"crossed{i}", f"<b><a href='{address}'>nee<i>dle</b> {WORD}</i> x</a>"


def names():
    """The payloads that the name of an indexed file can hold."""
    for payload in MARKUP:
        name = payload.replace("/", "\\").replace("\x00", "").replace("\n", " ")[:80]
        if "\\" not in name and ":" not in name:
            yield name


def run(*arguments):
    done = subprocess.run([str(a) for a in arguments], capture_output=True, check=False)
    return done.returncode, done.stdout.decode("utf-8"), done.stderr.decode("utf-8", "replace")


def is_safe_link(address):
    head = address.strip().split("/")[0].split("?")[0].split("#")[0]
    return ":" not in head or head.split(":")[0].lower() in SCHEMES


def problems(page):
    """What of a page is live, or comes from elsewhere than the program."""
    builder = html5lib.HTMLParser(namespaceHTMLElements=False)
    tree = builder.parse(page)
    found = []
    styles = 0
    for element in tree.iter():
        if not isinstance(element.tag, str) or element.tag not in ELEMENTS:
            found.append(f"<{element.tag}>")
            continue
        styles += element.tag == "style"
        for name, value in element.attrib.items():
            if name not in ATTRIBUTES:
                found.append(f"<{element.tag} {name}>")
            elif name == "href" and not is_safe_link(value):
                found.append(f"link to {value!r}")
            elif name in ("id", "name") and not value.startswith("doc-"):
                if element.tag not in ("mark", "span") or not value.startswith("hit"):
                    found.append(f"{name}={value!r}")
    metas = [e.attrib for e in tree.iter("meta")]
    if styles != 1 or metas != [{"charset": "utf-8"}] or len(list(tree.iter("title"))) != 1:
        found.append("a style, meta or title of the document")
    return found


def check_sees_live_markup():
    """The check itself must see what it looks for."""
    page = '<meta charset="utf-8"><title>t</title><style></style>{}'
    assert not problems(page.format("<p>x"))
    for payload in ("<script></script>", "<p onclick=x>", "<a href='java\tscript:x'>",
                    "<b id=x>", "<svg>", "<style></style>", "<img>"):
        assert problems(page.format(payload)), payload


def main():
    vemra = sys.argv[1]
    check_sees_live_markup()
    with tempfile.TemporaryDirectory() as folder:
        site = pathlib.Path(folder, "site")
        site.mkdir()
        pages = dict(contexts())
        for name, page in pages.items():
            pathlib.Path(site, f"{name}.html").write_bytes(page.encode("latin-1"))
        for i, name in enumerate(names()):
            pathlib.Path(site, f"{name}{i}.txt").write_text(f"{WORD} in a text\n")
        definition = pathlib.Path(folder, "db.cfg")
        code, _, errors = run(vemra, "create", definition, "--folder", site)
        assert code == 0, errors
        code, _, errors = run(vemra, "index", definition)
        assert code == 0, errors

        faults = []
        shown = 0

        def check(what, *arguments, words=False):
            nonlocal shown
            code, page, errors = run(vemra, *arguments)
            if code == 2 and not page and not words:
                return  # a query that cannot be read
            shown += 1
            faults.extend(f"{what}: {fault}" for fault in problems(page))
            if words and WORD not in "".join(html5lib.parse(page).itertext()):
                faults.append(f"{what}: the text is missing")

        texts = len(list(site.iterdir()))
        for number in range(1, texts + 1):
            check(f"text {number}", "show", definition, number, "--query", WORD, "--html",
                  words=True)
        check("list", "search", definition, WORD, "--count", texts, "--html", words=True)
        for payload in MARKUP + ADDRESSES:
            query = payload.replace("\x00", "")
            check(f"query {payload!r}", "search", definition, query, "--html")
        print(f"{len(pages)} documents, {shown} pages, {len(faults)} faults")
        for fault in faults[:40]:
            print(fault)
        return 1 if faults or shown < texts else 0


sys.exit(main())
