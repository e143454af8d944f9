// What a proxy says first on a connection: what is taken, what is refused, and that nothing behind it is
// touched.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/proxy_header.h"
#include "tests/service/proxy_lines.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;
using State = ProxyHeader::State;

namespace
{

ProxyHeader parsed(const QByteArray &bytes)
{
    return parseProxyHeader({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

QByteArray clientOf(const ProxyHeader &header)
{
    return header.client ? QByteArray::fromStdString(header.client->to_string()) : QByteArray("nobody");
}

const QByteArray v6 = QByteArray::fromHex("20010db8000100020000000000000009"
                                          "20010db8000000000000000000000001 0fa0 01bb");
const QByteArray entry = QByteArray::fromHex("02 0003") + "abc";

void rowsOfRefusedBytes()
{
    const auto row = [](const char *name, const QByteArray &bytes) { QTest::newRow(name) << bytes; };
    row("line without its end", "PROXY TCP4 192.0.2.7 10.0.0.1 4000 443\n");
    row("line with half an end", "PROXY TCP4 192.0.2.7 10.0.0.1 4000 443\rX");
    row("line that is too long", "PROXY UNKNOWN " + QByteArray(107 - 15, 'f') + "\r\n");
    row("line that does not end", "PROXY UNKNOWN " + QByteArray(107 - 14, 'f'));
    row("zero in an address", QByteArray("PROXY TCP4 192.0.2.7\0 10.0.0.1 4000 443\r\n", 41));
    row("one zero byte", QByteArray(1, '\0'));
    row("TLS", QByteArray::fromHex("16030102000100"));
    row("block, damaged signature", proxyBlock(0x21, 0x11, proxiedIpv4).replace("QUIT", "QUIZ"));
    row("block of version 1", proxyBlock(0x11, 0x11, proxiedIpv4));
    row("block of version 3", proxyBlock(0x31, 0x11, proxiedIpv4));
    row("block, another command", proxyBlock(0x22, 0x11, proxiedIpv4));
    row("block, datagrams", proxyBlock(0x21, 0x12, proxiedIpv4));
    row("block, datagrams over IPv6", proxyBlock(0x21, 0x22, v6));
    row("block, no transport", proxyBlock(0x21, 0x10, proxiedIpv4));
    row("block, a socket of the machine", proxyBlock(0x21, 0x31, QByteArray(216, 'x')));
    row("block, another family", proxyBlock(0x21, 0x41, proxiedIpv4));
    row("block without addresses", proxyBlock(0x21, 0x11, {}));
    row("block, short addresses", proxyBlock(0x21, 0x11, proxiedIpv4.chopped(1)));
    row("block, short addresses of IPv6", proxyBlock(0x21, 0x21, proxiedIpv4));
    row("block, half an entry", proxyBlock(0x21, 0x11, proxiedIpv4 + QByteArray::fromHex("0400")));
    row("block, an entry beyond the end",
        proxyBlock(0x21, 0x11, proxiedIpv4 + QByteArray::fromHex("040001")));
    row("block that is too long", proxyBlock(0x21, 0x11, proxiedIpv4 + QByteArray(2048 - 16 - 11, 'x')));
    row("the proxy's own block that is too long", proxyBlock(0x20, 0x00, QByteArray(65535, 'x')));
}

} // namespace

class TestProxyHeader : public QObject
{
    Q_OBJECT

private slots:
    void taken_data();
    void taken();
    void takenByteByByte_data() { taken_data(); }
    void takenByteByByte();
    void whatComesAfterIsLeft_data() { taken_data(); }
    void whatComesAfterIsLeft();
    void refused_data();
    void refused();
};

void TestProxyHeader::taken_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("client");
    const auto row = [](const char *name, const QByteArray &bytes, const QByteArray &client) {
        QTest::newRow(name) << bytes << client;
    };
    row("line", "PROXY TCP4 192.0.2.7 10.0.0.1 4000 443\r\n", "192.0.2.7");
    row("line, IPv6", "PROXY TCP6 2001:db8::7 ::1 4000 443\r\n", "2001:db8::7");
    row("shortest line with an address", "PROXY TCP6 :: :: 0 0\r\n", "::");
    row("line, IPv4 in IPv6", "PROXY TCP6 ::ffff:192.0.2.7 ::1 65535 443\r\n", "::ffff:192.0.2.7");
    row("longest line with addresses",
        "PROXY TCP6 ffff:f:f:f:f:f:f:ffff ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff 65535 65535\r\n",
        "ffff:f:f:f:f:f:f:ffff");
    row("line, unknown", "PROXY UNKNOWN\r\n", "nobody");
    row("line, unknown with words", "PROXY UNKNOWN 1 2 3\r\n", "nobody");
    row("longest line", "PROXY UNKNOWN " + QByteArray(107 - 16, 'f') + "\r\n", "nobody");
    row("block", proxyBlock(0x21, 0x11, proxiedIpv4), "192.0.2.7");
    row("block, IPv6", proxyBlock(0x21, 0x21, v6), "2001:db8:1:2::9");
    row("block with entries", proxyBlock(0x21, 0x11, proxiedIpv4 + entry + entry), "192.0.2.7");
    row("block with an empty entry", proxyBlock(0x21, 0x21, v6 + QByteArray::fromHex("040000")),
        "2001:db8:1:2::9");
    row("longest block",
        proxyBlock(0x21, 0x11, proxiedIpv4 + QByteArray::fromHex("0407e1") + QByteArray(2017, 'x')),
        "192.0.2.7");
    row("block, the proxy itself", proxyBlock(0x20, 0x00, {}), "nobody");
    row("block, the proxy itself with an address", proxyBlock(0x20, 0x11, proxiedIpv4), "nobody");
    row("block, the proxy itself with anything", proxyBlock(0x20, 0xff, "anything"), "nobody");
    row("block, unknown", proxyBlock(0x21, 0x00, "anything"), "nobody");
}

void TestProxyHeader::taken()
{
    QFETCH(QByteArray, bytes);
    const ProxyHeader header = parsed(bytes);
    QVERIFY(header.state == State::Complete);
    QCOMPARE(header.size, std::size_t(bytes.size()));
    QTEST(clientOf(header), "client");
}

// Reading what is missing, and no more, never reads beyond the header.
void TestProxyHeader::takenByteByByte()
{
    QFETCH(QByteArray, bytes);
    for (qsizetype size = 0; size < bytes.size(); ++size) {
        const ProxyHeader header = parsed(bytes.left(size));
        QVERIFY2(header.state == State::Incomplete, bytes.left(size).constData());
        QVERIFY(header.missing >= 1);
        QVERIFY(header.missing <= std::size_t(bytes.size() - size));
        QVERIFY(!header.client);
    }
}

void TestProxyHeader::whatComesAfterIsLeft()
{
    QFETCH(QByteArray, bytes);
    for (const QByteArray &more : {QByteArray("GET / HTTP/1.1\r\n"), QByteArray(5000, 'x'), bytes}) {
        const ProxyHeader header = parsed(bytes + more);
        QVERIFY(header.state == State::Complete);
        QCOMPARE(header.size, std::size_t(bytes.size()));
        QTEST(clientOf(header), "client");
    }
}

void TestProxyHeader::refused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    for (const char *line : {"PROXY TCP4 192.0.2.7 10.0.0.1 4000",
                             "PROXY TCP4 192.0.2.7 10.0.0.1 4000 443 1",
                             "PROXY TCP4 192.0.2.7 10.0.0.1 4000 443 ",
                             "PROXY  TCP4 192.0.2.7 10.0.0.1 4000 443",
                             "PROXY TCP4\t192.0.2.7 10.0.0.1 4000 443",
                             "PROXY tcp4 192.0.2.7 10.0.0.1 4000 443",
                             "PROXY TCP4 2001:db8::7 ::1 4000 443",
                             "PROXY TCP6 192.0.2.7 10.0.0.1 4000 443",
                             "PROXY TCP4 192.0.2.7 ::1 4000 443",
                             "PROXY TCP4 192.0.2 10.0.0.1 4000 443",
                             "PROXY TCP4 192.0.2.256 10.0.0.1 4000 443",
                             "PROXY TCP4 192.0.2.07 10.0.0.1 4000 443",
                             "PROXY TCP4 3221225991 10.0.0.1 4000 443",
                             "PROXY TCP4 localhost 10.0.0.1 4000 443",
                             "PROXY TCP6 fe80::7%lo ::1 4000 443",
                             "PROXY TCP4 192.0.2.7 10.0.0.1 65536 443",
                             "PROXY TCP4 192.0.2.7 10.0.0.1 -1 443",
                             "PROXY TCP4 192.0.2.7 10.0.0.1 +1 443",
                             "PROXY TCP4 192.0.2.7 10.0.0.1 01 443",
                             "PROXY TCP4 192.0.2.7 10.0.0.1  443",
                             "PROXY TCP4 192.0.2.7 10.0.0.1 4000 99999999999",
                             "PROXY UNKNOWNS",
                             "PROXY ",
                             "proxy TCP4 192.0.2.7 10.0.0.1 4000 443",
                             "GET / HTTP/1.1"})
        QTest::newRow(line) << QByteArray(line) + "\r\n";
    rowsOfRefusedBytes();
}

void TestProxyHeader::refused()
{
    QFETCH(QByteArray, bytes);
    const ProxyHeader header = parsed(bytes);
    QVERIFY(header.state == State::Invalid);
    QVERIFY(!header.client);
}

TIDELOFT_TEST_MAIN(TestProxyHeader)
#include "tst_proxy_header.moc"
