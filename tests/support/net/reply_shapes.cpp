// The table of replies. What a reader finds in a body is written down beside it, not taken from the parser.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/net/reply_shapes.h"

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

constexpr int deepest = 1024; // that the toolkit's parser goes
constexpr int many = 100'000;

QByteArray reply(const QByteArray &status, const QByteArray &headers, const QByteArray &body)
{
    return "HTTP/1.1 " + status + "\r\n" + headers + "Content-Length: " + QByteArray::number(body.size())
           + "\r\n\r\n" + body;
}

ReplyShape good(const QByteArray &name, const QByteArray &body, const QByteArray &readsAs)
{
    return {name, reply("200 OK", {}, body), false, {}, readsAs};
}

ReplyShape good(const QByteArray &name, const QByteArray &body)
{
    return good(name, body, body);
}

ReplyShape noJson(const QByteArray &name, const QByteArray &body)
{
    return good(name, body, {});
}

ReplyShape wire(const QByteArray &name, const QByteArray &bytes, const QString &error = {},
                const QByteArray &readsAs = {})
{
    return {name, bytes, true, error, readsAs};
}

QByteArray nestedObjects(int depth)
{
    return QByteArray(R"({"keys":)").repeated(depth - 1) + "{}" + QByteArray("}").repeated(depth - 1);
}

QByteArray listOf(const QByteArray &element)
{
    QByteArray list = '[' + (element + ',').repeated(many);
    list.chop(1);
    return list + ']';
}

QByteArray manyMembers()
{
    QByteArray object = "{";
    for (int i = 0; i < many; ++i)
        object += "\"k" + QByteArray::number(i) + "\":0,";
    object.chop(1);
    return object + '}';
}

// {"keys":[]} as gzip (RFC 1952) writes it.
const QByteArray zipped = QByteArrayLiteral("\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\x03\xab\x56\xca\x4e\xad\x2c"
                                            "\x56\xb2\x8a\x8e\xad\x05\x00\xef\x67\x88\x2a\x0b\x00\x00\x00");

QList<ReplyShape> documentsOfWrongTypes()
{
    return {
        noJson("empty", ""),
        noJson("blank", " \r\n\t "),
        noJson("null", "null"),
        noJson("number", "7"),
        noJson("text", R"("keys")"),
        good("empty array", "[]"),
        good("empty object", "{}"),
        good("elements of every type", R"([null,true,7,-1.5e300,"x",[],{},{"username":7}])"),
        good("members of wrong types", R"({"username":7,"keys":{"a":1},"publicKey":[1],"iconUrl":false})"),
        good("other wrong types", R"({"username":{},"keys":"x","publicKey":null,"iconUrl":["/a"]})"),
        good("keys of every type", R"({"keys":[null,7,"x",[],{},{"publicKey":7},{"publicKeyBase64":[]}]})"),
        good("array of arrays", "[[[]],[[],[]]]"),
        good("error in a success", R"({"message":"no","error":"none"})"),
    };
}

QList<ReplyShape> documentsOfOddSizes()
{
    return {
        good("arrays as deep as they may be", nestedArrays(deepest)),
        noJson("arrays one too deep", nestedArrays(deepest + 1)),
        noJson("arrays far too deep", nestedArrays(many)),
        good("objects as deep as they may be", nestedObjects(deepest)),
        noJson("objects one too deep", nestedObjects(deepest + 1)),
        noJson("arrays without end", QByteArray("[").repeated(many)),
        good("100,000 numbers", listOf("0")),
        good("100,000 objects", listOf(R"({"peer":"bob"})")),
        good("100,000 keys", R"({"keys":)" + listOf("{}") + '}'),
        good("100,000 members", manyMembers()),
        good("a name of 1,000,000 characters", R"({"username":")" + QByteArray(1'000'000, 'n') + R"("})"),
    };
}

QList<ReplyShape> documentsWithFaults()
{
    return {
        noJson("truncated object", R"({"username":"al)"),
        noJson("truncated array", R"([{"peer":"bob"},{"pee)"),
        noJson("text after the document", R"({"username":"a"} x)"),
        good("duplicate members", R"({"username":"a","username":"b","keys":1,"keys":[{}]})",
             R"({"username":"b","keys":[{}]})"),
        noJson("numbers as names", R"({1:2,"username":"a"})"),
        good("digits as names", R"({"1":2,"":3})"),
        noJson("comma at the end", "[1,2,]"),
        noJson("single quotes", "{'username':'a'}"),
        noJson("comment", "[/* */]"),
        noJson("not a number", "[NaN]"),
        noJson("number beyond all", "[1e999]"),
        noJson("text that is no UTF-8", "[\"\xff\xfe\"]"),
        noJson("NUL between elements", QByteArray("[1,\0 2]", 7)),
        noJson("UTF-16", QByteArray("[\0]\0", 4)),
        noJson("HTML", R"(<html><body>{"username":"a"}</body></html>)"),
        noJson("gzip that is not declared", zipped),
    };
}

QList<ReplyShape> refusals()
{
    const QString replied = u"Error transferring %1 - server replied: "_s;
    const auto bad = [&](const QByteArray &name, const QByteArray &status, const QByteArray &body,
                         const QString &error, const QByteArray &readsAs) {
        return ReplyShape{name, reply(status, {}, body), false, error, readsAs};
    };
    const QByteArray deepMessage = R"({"message":)" + nestedArrays(deepest - 1) + '}';
    const QByteArray tooDeep = R"({"message":)" + nestedArrays(deepest) + '}';
    return {
        bad("400 with a message", "400 Bad", R"({"message":"no","error":"b"})", replied + u"Bad"_s,
            R"({"message":"no","error":"b"})"),
        bad("409 with an error", "409 X", R"({"error":"b"})", replied + u"X"_s, R"({"error":"b"})"),
        bad("422 with neither", "422 X", "{}", replied + u"X"_s, "{}"),
        bad("500 with an array", "500 X", "[1]", replied + u"X"_s, "[1]"),
        bad("503 with a deep message", "503 X", deepMessage, replied + u"X"_s, deepMessage),
        bad("503 with too deep a message", "503 X", tooDeep, replied + u"X"_s, {}),
        bad("502 with HTML", "502 Bad Gateway", "<html>", replied + u"Bad Gateway"_s, {}),
        bad("404 without a reason", "404", "", replied, {}),
        bad("999", "999 Beyond", "", replied + u"Beyond"_s, {}),
        bad("407 from the service itself", "407 Proxy", "", u"Proxy requires authentication"_s, {}),
        bad("304 without a question", "304 Not Modified", "", {}, {}),
        bad("302 that leads nowhere", "302 Found", "", u"Unknown protocol specified"_s, {}),
    };
}

QList<ReplyShape> encodings()
{
    const auto declared = [](const QByteArray &name, const QByteArray &encoding, const QByteArray &body,
                             const QString &error, const QByteArray &readsAs) {
        return wire(name, reply("200 OK", "Content-Encoding: " + encoding + "\r\n", body), error, readsAs);
    };
    return {
        declared("gzip", "gzip", zipped, {}, R"({"keys":[]})"),
        declared("gzip that is plain text", "gzip", R"({"keys":[]})", u"Decompression failed: "_s, {}),
        declared("gzip that ends early", "gzip", zipped.left(20), {}, {}),
        declared("deflate that is gzip", "deflate", zipped, {}, R"({"keys":[]})"),
        declared("br that is plain text", "br", "[]", {}, {}),
        declared("encoding that nobody knows", "x-none", R"({"keys":[]})", {}, R"({"keys":[]})"),
    };
}

QList<ReplyShape> chunks()
{
    const QByteArray head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    return {
        wire("chunked", head + "2\r\n{\"\r\n9\r\nkeys\":[]}\r\n0\r\n\r\n", {}, R"({"keys":[]})"),
        wire("chunk size that is no number", head + "zz\r\n[]\r\n0\r\n\r\n", {}),
        wire("chunk size beyond all", head + "ffffffffffffffff\r\n[]", {}),
        wire("chunk size below zero", head + "-5\r\n[]\r\n0\r\n\r\n", {}),
    };
}

QList<ReplyShape> lengths()
{
    const QByteArray ok = "HTTP/1.1 200 OK\r\n";
    return {
        wire("length beyond the body", ok + "Content-Length: 99\r\n\r\n{\"error\":\"e\"}",
             u"Connection closed"_s, R"({"error":"e"})"),
        wire("length short of the body", ok + "Content-Length: 4\r\n\r\n{\"keys\":[]}"),
        wire("length below zero", ok + "Content-Length: -7\r\n\r\n[]", {}, "[]"),
        wire("length that is no number", ok + "Content-Length: many\r\n\r\n[]", {}, "[]"),
        wire("two lengths", ok + "Content-Length: 2\r\nContent-Length: 3\r\n\r\n[]", {}),
        wire("no length", ok + "\r\n[]", {}, "[]"),
        wire("204", "HTTP/1.1 204 No Content\r\n\r\n"),
        wire("204 with a length", "HTTP/1.1 204 No Content\r\nContent-Length: 9\r\n\r\n"),
        wire("304 with a length", "HTTP/1.1 304 Not Modified\r\nContent-Length: 9\r\n\r\n"),
        wire("chunks and a length",
             ok + "Content-Length: 99\r\nTransfer-Encoding: Chunked\r\n\r\n2\r\n[]\r\n0\r\n\r\n", {}, "[]"),
        wire("204 with a body", "HTTP/1.1 204 No Content\r\nContent-Length: 2\r\n\r\n[]", {}, "[]"),
        wire("100 before the reply", "HTTP/1.1 100 Continue\r\n\r\n" + reply("200 OK", {}, "[]"), {}, "[]"),
        wire("102 before the reply", "HTTP/1.1 102 Processing\r\n\r\n" + reply("200 OK", {}, "[]"), {}),
        wire("103 before the reply", "HTTP/1.1 103 Early Hints\r\n\r\n" + reply("200 OK", {}, "[]"), {}),
        wire("100 and nothing else", "HTTP/1.1 100 Continue\r\n\r\n", u"Connection closed"_s),
    };
}

QList<ReplyShape> drops()
{
    const QString closed = u"Connection closed"_s;
    const QByteArray ok = "HTTP/1.1 200 OK\r\n";
    return {
        wire("dropped before the status", {}, closed),
        wire("dropped in the status", "HTTP/1.1 2", closed),
        wire("dropped after the status", ok, closed),
        wire("dropped in a header", ok + "Content-Len", closed),
        wire("dropped after the headers", ok + "Content-Length: 9\r\n\r\n", closed),
        wire("dropped in the body", ok + "Content-Length: 99\r\n\r\n[{\"peer\":\"bo", closed),
        wire("no HTTP", "SSH-2.0-x\r\n\r\n", closed),
        wire("HTTP of another age", "HTTP/9.9 200 OK\r\nContent-Length: 2\r\n\r\n[]", {}),
        wire("status that is no number", "HTTP/1.1 abc OK\r\nContent-Length: 2\r\n\r\n[]", closed),
        wire("header without a colon", ok + "nonsense\r\nContent-Length: 2\r\n\r\n[]", {}),
        wire("10,000 headers", ok + QByteArray("a: b\r\n").repeated(10'000) + "\r\n[]", {}),
        wire("header of 100,000 bytes", ok + "a: " + QByteArray(100'000, 'b') + "\r\n\r\n[]", {}),
    };
}

QList<ReplyShape> redirects()
{
    const auto to = [](const QByteArray &name, const QByteArray &place, const QString &error) {
        return wire(name, reply("302 Found", "Location: " + place + "\r\n", {}), error);
    };
    return {
        to("redirect to a file", "file:///etc/hostname", u"Unknown protocol specified"_s),
        to("redirect to data", "data:application/json,[]", u"Unknown protocol specified"_s),
        to("redirect to ftp", "ftp://127.0.0.1:1/x", u"Unknown protocol specified"_s),
        to("redirect to no place", "http://", u"Host  not found"_s),
        to("redirect to a dead host", "http://127.0.0.1:1/x", u"Connection refused"_s),
    };
}

} // namespace

QByteArray nestedArrays(int depth)
{
    return QByteArray("[").repeated(depth) + QByteArray("]").repeated(depth);
}

QList<ReplyShape> documentShapes()
{
    return documentsOfWrongTypes() + documentsOfOddSizes() + documentsWithFaults() + refusals();
}

QList<ReplyShape> wireShapes()
{
    return encodings() + chunks() + lengths() + drops() + redirects();
}

} // namespace tideloft::tests
