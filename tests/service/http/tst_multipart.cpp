// Which forms are read, and which are refused because two readers could see different things in them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/delimiter_search.h"
#include "service/http/multipart.h"
#include "tests/service/picture_material.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

namespace
{

// Walks over bytes and counts how often one is looked at.
class CountingIterator
{
public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char *;
    using reference = const char &;

    CountingIterator() = default;
    CountingIterator(const char *place, qint64 *counter) : at(place), reads(counter) {}

    reference operator*() const { return ++*reads, *at; }
    reference operator[](difference_type n) const { return ++*reads, at[n]; }
    CountingIterator &operator++() { return ++at, *this; }
    CountingIterator operator++(int) { return {at++, reads}; } // NOLINT(cert-dcl21-cpp): as iterators do
    CountingIterator &operator--() { return --at, *this; }
    CountingIterator &operator+=(difference_type n) { return at += n, *this; }
    CountingIterator operator+(difference_type n) const { return {at + n, reads}; }
    CountingIterator operator-(difference_type n) const { return {at - n, reads}; }
    difference_type operator-(const CountingIterator &other) const { return at - other.at; }
    bool operator==(const CountingIterator &other) const { return at == other.at; }

private:
    const char *at = nullptr;
    qint64 *reads = nullptr;
};

} // namespace

class TestMultipart : public QObject
{
    Q_OBJECT

private slots:
    void contentTypes_data();
    void contentTypes();
    void readForms_data();
    void readForms();
    void brokenForms_data();
    void brokenForms();
    void truncatedAnywhereIsBroken();
    void everyByteIsReadAtMostThreeTimes_data();
    void everyByteIsReadAtMostThreeTimes();

private:
    // What is read, or the status of the refusal.
    struct Outcome {
        int status = 200;
        QByteArray content;
        QString message;
    };

    static Outcome read(const QByteArray &body, const QByteArray &contentType = formType)
    {
        try {
            return {200, formField({"POST", "/", contentType, {}, body, {}}, "icon"), {}};
        } catch (const Refusal &refusal) {
            return {refusal.status, {}, refusal.message};
        }
    }
};

void TestMultipart::contentTypes_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("mark");
    QTest::addColumn<int>("status");
    const auto row = [](const char *name, const QByteArray &type, const QByteArray &text, int status) {
        QTest::newRow(name) << type << text << status;
    };
    const QByteArray longest(70, 'b');
    row("plain boundary", "multipart/form-data; boundary=abc", "abc", 200);
    row("quoted boundary", "multipart/form-data; boundary=\"a b:c\"", "a b:c", 200);
    row("escaped character", R"(multipart/form-data; boundary="a\bc")", "abc", 200);
    row("capitals", "Multipart/Form-Data; BOUNDARY=aBc", "aBc", 200);
    row("further parameters", "multipart/form-data;charset=utf-8;boundary=abc;", "abc", 200);
    row("70 characters", "multipart/form-data; boundary=" + longest, longest, 200);
    row("71 characters", "multipart/form-data; boundary=b" + longest, 'b' + longest, 400);
    row("no boundary", "multipart/form-data", "abc", 400);
    row("empty boundary", "multipart/form-data; boundary=\"\"", "", 400);
    row("boundary ends in a blank", "multipart/form-data; boundary=\"abc \"", "abc ", 400);
    row("other characters", "multipart/form-data; boundary=\"a*c\"", "a*c", 400);
    row("line break", "multipart/form-data; boundary=\"a\r\nc\"", "a\r\nc", 400);
    row("NUL", QByteArray("multipart/form-data; boundary=\"a\0c\"", 35), QByteArray("a\0c", 3), 400);
    row("quotation does not end", "multipart/form-data; boundary=\"abc", "abc", 415);
    row("two boundaries", "multipart/form-data; boundary=abc; boundary=x", "abc", 415);
    row("rubbish behind", "multipart/form-data; boundary=abc x", "abc", 415);
    row("JSON", "application/json", "abc", 415);
    row("other multipart", "multipart/mixed; boundary=abc", "abc", 415);
    row("none", "", "abc", 415);
}

void TestMultipart::contentTypes()
{
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, mark);
    QFETCH(int, status);
    const QByteArray part = "\r\nContent-Disposition: form-data; name=icon\r\n\r\ncontent\r\n--";
    const Outcome outcome = read("--" + mark + part + mark + "--", type);
    QCOMPARE(outcome.status, status);
    QCOMPARE(outcome.content, status == 200 ? QByteArray("content") : QByteArray());
    QCOMPARE(outcome.message.isEmpty(), status == 200);
}

void TestMultipart::readForms_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("content");
    const auto row = [](const char *name, const QByteArray &body, const QByteArray &content) {
        QTest::newRow(name) << body << content;
    };
    const QByteArray part = filePart("icon", "abc");
    row("one part", form(part), "abc");
    row("preamble", "not read\r\n" + form(part), "abc");
    row("only a line break before", "\r\n" + form(part), "abc");
    row("epilogue", form(part) + "not read\r\n--" + boundary + "\r\n", "abc");
    row("no line break at the end", form(part).chopped(2), "abc");
    row("blanks behind the boundaries", form(part).replace(boundary, boundary + " \t").replace(" \t--", "--"),
        "abc");
    row("empty file", form(filePart("icon", "")), "");
    row("second of three", form(filePart("a", "1") + part + filePart("b", "2")), "abc");
    row("line breaks at both ends", form(filePart("icon", "\r\n\r\nabc\r\n")), "\r\n\r\nabc\r\n");
    row("boundary inside a line", form(filePart("icon", "a--" + boundary + "--\r\nc")),
        "a--" + boundary + "--\r\nc");
    row("boundary behind a bare line feed", form(filePart("icon", "a\n--" + boundary + "--\r\nc")),
        "a\n--" + boundary + "--\r\nc");
    row("beginning of a boundary", form(filePart("icon", "a\r\n--" + boundary.chopped(1))),
        "a\r\n--" + boundary.chopped(1));
    row("NUL in the content", form(filePart("icon", QByteArray("a\0c", 3))), QByteArray("a\0c", 3));
    row("no type", form(part).replace("Content-Type: image/png\r\n", ""), "abc");
    row("type without a kind", form(part).replace("image/png", "image/"), "abc");
    row("names of headers in capitals", form(part).replace("Content-Disp", "CONTENT-DISP"), "abc");
    row("name without quotation", form(part).replace("\"icon\"", "icon"), "abc");
    row("no file name", form(part).replace("; filename=\"icon.png\"", ""), "abc");
    row("file name leads out", form(part).replace("icon.png", "../../etc/passwd"), "abc");
    row("file name in other letters", form(part).replace("icon.png", "\xc3\xa5.png"), "abc");
    row("16 parts", form(part + filePart("a", "1").repeated(15)), "abc");
}

void TestMultipart::readForms()
{
    QFETCH(QByteArray, body);
    QFETCH(QByteArray, content);
    const Outcome outcome = read(body);
    QVERIFY2(outcome.status == 200, qPrintable(outcome.message));
    QCOMPARE(outcome.content, content);
}

void TestMultipart::brokenForms_data()
{
    QTest::addColumn<QByteArray>("body");
    const auto row = [](const char *name, const QByteArray &body) { QTest::newRow(name) << body; };
    const QByteArray part = filePart("icon", "abc");
    const QByteArray disposition = "Content-Disposition: form-data; name=\"icon\"";
    row("empty", "");
    row("no boundary in the body", "abc");
    row("other boundary", form(part).replace(boundary, "other"));
    row("only the end", form(""));
    row("no such field", form(filePart("avatar", "abc")));
    row("field in other letters", form(filePart("ICON", "abc")));
    row("field twice", form(part + part));
    row("17 parts", form(part + filePart("a", "1").repeated(16)));
    row("longer boundary in the content", form(filePart("icon", "a\r\n--" + boundary + "x\r\nc")));
    row("rubbish behind the first boundary",
        form(part).replace(0, boundary.size() + 2, "--" + boundary + 'x'));
    row("rubbish behind the end", form(part).chopped(2) + "x");
    row("bare line feeds", form(part).replace("\r\n", "\n"));
    row("part without header", form("--" + boundary + "\r\n\r\nabc\r\n"));
    row("header without end", form("--" + boundary + "\r\n" + disposition + "\r\n"));
    row("no disposition", form(part).replace("Content-Disposition", "X-Disposition"));
    row("two dispositions", form(part).replace("Content-Type: image/png", disposition));
    row("other disposition", form(part).replace("form-data", "attachment"));
    row("no name", form(part).replace("name=\"icon\"; ", ""));
    row("empty name", form(filePart("", "abc")));
    row("two names", form(part).replace("; filename", "; name=\"a\"; filename"));
    row("NUL in the name", form(filePart(QByteArray("icon\0", 5), "abc")));
    row("NUL in the file name", form(part).replace("icon.png", QByteArray("icon\0.png", 9)));
    row("bare line feed in the name", form(filePart("ic\non", "abc")));
    row("quotation does not end", form(part).replace("icon.png\"", "icon.png"));
    row("folded header", form(part).replace("; filename", ";\r\n filename"));
    row("blank before the colon", form(part).replace("Content-Disposition:", "Content-Disposition :"));
    row("header line without colon", form(part).replace("Content-Type:", "Content-Type"));
    row("another part is broken", form(part + "--" + boundary + "\r\nX: y\r\n\r\nabc\r\n"));
    row("header of 5 KiB", form(part).replace("image/png", QByteArray(5 * 1024, 'x')));
}

void TestMultipart::brokenForms()
{
    QFETCH(QByteArray, body);
    const Outcome outcome = read(body);
    QCOMPARE(outcome.status, 400);
    QVERIFY(!outcome.message.isEmpty());
}

void TestMultipart::truncatedAnywhereIsBroken()
{
    const QByteArray whole = form(filePart("a", "1") + filePart("icon", "abc")).chopped(2);
    QCOMPARE(read(whole).status, 200);
    for (qsizetype length = 0; length < whole.size(); ++length)
        QVERIFY2(read(whole.first(length)).status == 400, QByteArray::number(length).constData());
}

void TestMultipart::everyByteIsReadAtMostThreeTimes_data()
{
    QTest::addColumn<char>("filling");
    QTest::addColumn<QByteArray>("text");
    const int size = 100'000;
    const auto lookalikes = [](const QByteArray &one) { return one.repeated(size / int(one.size())); };
    const QByteArray longest(70, 'a');
    QTest::newRow("the boundary's character") << 'a' << QByteArray(size, 'a');
    QTest::newRow("carriage returns") << 'a' << QByteArray(size, '\r');
    QTest::newRow("line breaks") << 'a' << lookalikes("\r\n");
    QTest::newRow("line breaks and hyphens") << 'a' << lookalikes("\r\n--");
    QTest::newRow("hyphens") << '-' << QByteArray(size, '-');
    QTest::newRow("delimiters of which the last character is missing")
        << 'a' << lookalikes("\r\n--" + longest.chopped(1));
    QTest::newRow("delimiters of which the last character is another")
        << 'a' << lookalikes("\r\n--" + longest.chopped(1) + 'b');
    QTest::newRow("delimiters without their line break") << 'a' << lookalikes("--" + longest);
}

// Counts instead of measuring: a search that goes back after every near miss reads each byte up to 70 times.
void TestMultipart::everyByteIsReadAtMostThreeTimes()
{
    QFETCH(char, filling);
    QFETCH(QByteArray, text);
    const QByteArray delimiter = "\r\n--" + QByteArray(70, filling);
    qint64 reads = 0;
    const CountingIterator begin{text.constBegin(), &reads};
    QVERIFY(findDelimiter(begin, begin + text.size(), delimiter) == begin + text.size());
    QVERIFY2(reads <= 3 * text.size(), QByteArray::number(reads).constData());
    const QByteArray whole = text + delimiter + text;
    QCOMPARE(findDelimiter(whole.begin(), whole.end(), delimiter) - whole.begin(), text.size());
}

TIDELOFT_TEST_MAIN(TestMultipart)
#include "tst_multipart.moc"
