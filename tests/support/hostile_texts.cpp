// The table of hostile texts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/hostile_texts.h"

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

void addTags(QList<HostileText> &all)
{
    for (const char *tag : {"<b>bold</b>",
                            "<i>open",
                            "</b>",
                            "<br>",
                            "<hr>",
                            "<p>a</p><p>b</p>",
                            "<h1>Big</h1>",
                            "<pre>x</pre>",
                            "<table border=1><tr><td>x</td></tr></table>",
                            "<ul><li>x</li></ul>",
                            "<font size=7>x</font>",
                            "<span style='font-size:900px'>x</span>",
                            "<!-- x -->",
                            "<![CDATA[x]]>",
                            "<?xml version='1.0'?>",
                            "<html><body>x</body></html>",
                            "<!DOCTYPE html>x",
                            "<style>*{color:red}</style>",
                            "<script>x()</script>",
                            "<qt>x</qt>",
                            "<center>x</center>",
                            "<body background='/dev/zero'>x",
                            "<title>x</title>x",
                            "<meta http-equiv=refresh content=0>",
                            "<b",
                            "<",
                            ">",
                            "<>",
                            "a<b>c",
                            "# Head",
                            "**bold** _it_ `code`",
                            "![x](/dev/zero)",
                            "[x](http://127.0.0.1:9/)"})
        all.append({tag, QString::fromUtf8(tag)});
}

void addResources(QList<HostileText> &all, const QString &file)
{
    QStringList sources{file,
                        u"file://"_s + file,
                        u"/dev/zero"_s,
                        u"/dev/stdin"_s,
                        u"/dev/tty"_s,
                        u"/proc/self/mem"_s,
                        u"/etc/passwd"_s,
                        u"file:///etc/hostname"_s,
                        u"../../../../etc/passwd"_s,
                        u"qrc:/x.png"_s,
                        u":/qt-project.org/qmessagebox/images/qtlogo-64.png"_s,
                        u"data:image/png;base64,iVBORw0KGgo="_s,
                        u"http://127.0.0.1:9/x.png"_s,
                        u"https://example.invalid/x.png"_s,
                        u"//example.invalid/x.png"_s,
                        u"\\\\example.invalid\\share\\x.png"_s};
    for (const QString &source : sources) {
        all.append({"picture " + source.toUtf8(), u"<img src=\"%1\">"_s.arg(source)});
        all.append({"link " + source.toUtf8(), u"<a href=\"%1\">Click</a>"_s.arg(source)});
    }
    all.append({"style sheet", u"<link rel=stylesheet href=\"%1\">x"_s.arg(file)});
    all.append({"picture without quotes", u"<IMG SRC=%1 width=99999 height=99999>"_s.arg(file)});
    all.append({"picture in a style", u"<p style=\"background:url(%1)\">x</p>"_s.arg(file)});
    all.append({"nested tables", u"<table><tr><td>"_s.repeated(25) + u"x"_s});
    all.append({"plain link", u"https://example.invalid/"_s});
}

void addCharacters(QList<HostileText> &all)
{
    const auto add = [&all](const char *name, const QString &text) { all.append({name, text}); };
    add("mnemonic", u"&File && &&& R&D"_s);
    add("only mnemonics", u"&&"_s);
    add("entities", u"&lt;b&gt; &amp; &#0; &#x10FFFF;"_s);
    add("place markers", u"%1 %2 %99 %L1 %n %s %x"_s);
    add("a place marker", u"%1"_s);
    add("escapes", u"\\n \\u0000 \\x1b[31m"_s);
    add("terminal colours", u"\x1b[31mred\x1b[0m"_s);
    add("NUL", u"a"_s + QChar(0) + u"b"_s);
    add("control characters", u"\x01\x02\x07\x08\x7f"_s);
    add("tabs and feeds", u"a\tb\vc\fd"_s);
    add("text variants of the toolkit", u"long text\u009cshort"_s);
    add("two lines", u"a\nb"_s);
    add("other line breaks", u"a\r\nb\rc\u2028d\u2029e"_s);
    add("right-to-left override", u"\u202egnp.exe"_s);
    add("bidirectional marks", u"\u200e\u200f\u202a\u202b\u202c\u202d\u2066\u2067\u2068\u2069x"_s);
    add("deep isolates", u"\u2067"_s.repeated(200) + u"x"_s);
    add("zero width", u"a\u200b\u200c\u200d\u2060\ufeffb"_s);
    add("only zero width", u"\u200b\u200b"_s);
    add("soft hyphens", u"a\u00ad"_s.repeated(50));
    add("combining", u"Z\u0301\u0302\u0303\u0304\u0305\u0306\u0307"_s);
    add("combining first", u"\u0301\u0301x"_s);
    add("2,000 combining", u"a"_s + u"\u0301"_s.repeated(2000));
    add("lone high surrogate", u"a"_s + QChar(0xd83d));
    add("lone low surrogate", QChar(0xde00) + u"a"_s);
    add("surrogates in wrong order", QString(QChar(0xde00)) + QChar(0xd83d));
    add("noncharacters", u"\ufffe\uffff\ufdd0"_s);
    add("replacement and object", u"\ufffd\ufffcx"_s);
    add("private use", u"\ue000\uf8ff"_s);
    add("emoji", u"😀🔥👨‍👩‍👧🇸🇪👍🏽"_s);
    add("letters that grow", u"ßŉǰΐﬃ"_s);
    add("wide letter", u"﷽𒐫"_s);
    add("variation selectors", u"a\ufe0e\ufe0f\U000e0100"_s);
    add("letters without a font", u"\U0010fffd\U000e0041"_s);
}

void addSizes(QList<HostileText> &all)
{
    all.append({"5,000 letters", QString(5'000, u'W')});
    all.append({"5,000 words", u"word "_s.repeated(5'000)});
    all.append({"5,000 emoji", u"🔥"_s.repeated(5'000)});
    all.append({"100,000 letters", QString(100'000, u'x')});
    all.append({"one million line breaks", u"x"_s + QString(1'000'000, u'\n') + u"x"_s});
    all.append({"100,000 combining", u"a"_s + u"\u0301"_s.repeated(100'000)});
    all.append({"two directions in one word", u"\u05d0a"_s.repeated(50'000)});
}

} // namespace

QList<HostileText> hostileTexts(const QString &file)
{
    QList<HostileText> all;
    addTags(all);
    addResources(all, file);
    addCharacters(all);
    addSizes(all);
    return all;
}

} // namespace tideloft::tests
