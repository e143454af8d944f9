// The key files at a sign-in: made when they are missing, and what happens when they cannot be.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QLabel>
#include <QMessageBox>
#include <QStandardPaths>

using namespace Qt::StringLiterals;
using namespace tideloft;
using namespace tideloft::tests;

class TestDeviceKeyFlowFiles : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { removeKeyPair(); }
    void firstSignInMakesBothFilesFirst();
    void missingPublicFileReplacesThePair();
    void existingFilesStay();
    void directoryInThePlaceOfAKeyFile_data();
    void directoryInThePlaceOfAKeyFile();
    void fileInThePlaceOfTheDataDirectory();
    void blankPublicKeyFile_data();
    void blankPublicKeyFile();
    void publicKeyWithALineEnd();

private:
    static QByteArray contentOf(const QString &path);
    static bool writeTo(const QString &path, const QByteArray &content);
    /// Signs in where no key can be had: the main page opens, nothing is registered, nothing is shown.
    static void signInWithoutRegistration(GuiProbe &probe);
};

void TestDeviceKeyFlowFiles::init()
{
    failOnToolkitWarnings();
    removeKeyPair();
}

QByteArray TestDeviceKeyFlowFiles::contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool TestDeviceKeyFlowFiles::writeTo(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

void TestDeviceKeyFlowFiles::signInWithoutRegistration(GuiProbe &probe)
{
    QVERIFY(probe.signIn());
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count("POST /api/chat/device-key"), 0);
    QCOMPARE(probe.service.count("GET /api/chat/device-keys/me"), 1);
    QVERIFY(probe.onMainPage());
    QVERIFY(probe.refreshTimer()->isActive());
    QCOMPARE(probe.the<QLabel>(u"myName"_s)->text(), u"alice"_s);
    QVERIFY(!probe.window->findChild<QMessageBox *>());
}

void TestDeviceKeyFlowFiles::firstSignInMakesBothFilesFirst()
{
    GuiProbe probe;
    probe.service.hold("GET /api/me");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QVERIFY(probe.service.waitForRequests("GET /api/me", 1));
    QVERIFY(!crypto::privateKeyExists());
    QVERIFY(!crypto::publicKeyExists());
    probe.service.hold("POST /api/chat/device-key");
    probe.service.release("GET /api/me");
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    QVERIFY(!contentOf(crypto::privateKeyPath()).isEmpty());
    const QByteArray publicKey = contentOf(crypto::publicKeyPath());
    QVERIFY(!publicKey.isEmpty());
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    const auto sent = QJsonDocument::fromJson(probe.service.lastRequest("POST /api/chat/device-key").body);
    QCOMPARE(sent[u"publicKey"], QJsonValue(QString::fromLatin1(publicKey)));
}

void TestDeviceKeyFlowFiles::missingPublicFileReplacesThePair()
{
    placeKeyPair();
    const QByteArray privateKey = contentOf(crypto::privateKeyPath());
    QVERIFY(QFile::remove(crypto::publicKeyPath()));
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(contentOf(crypto::privateKeyPath()) != privateKey);
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    const auto sent = QJsonDocument::fromJson(probe.service.lastRequest("POST /api/chat/device-key").body);
    QCOMPARE(sent[u"publicKey"], QJsonValue(QString::fromLatin1(contentOf(crypto::publicKeyPath()))));
}

void TestDeviceKeyFlowFiles::existingFilesStay()
{
    placeKeyPair();
    const QByteArray privateKey = contentOf(crypto::privateKeyPath());
    const QByteArray publicKey = contentOf(crypto::publicKeyPath());
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QCOMPARE(contentOf(crypto::privateKeyPath()), privateKey);
    QCOMPARE(contentOf(crypto::publicKeyPath()), publicKey);
}

void TestDeviceKeyFlowFiles::directoryInThePlaceOfAKeyFile_data()
{
    QTest::addColumn<QString>("half");
    QTest::newRow("private key file") << u"private"_s;
    QTest::newRow("public key file") << u"public"_s;
}

// As in a data directory that cannot be written to, which holds for an administrator too.
void TestDeviceKeyFlowFiles::directoryInThePlaceOfAKeyFile()
{
    QFETCH(QString, half);
    const bool isPrivate = half == u"private";
    const QString path = isPrivate ? crypto::privateKeyPath() : crypto::publicKeyPath();
    QVERIFY(QDir().mkpath(path));
    const QString logged = u"Key pair error: Could not write %1 key file: %2"_s.arg(half, path);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(logged));
    QTest::failOnWarning(QRegularExpression(u"."_s));
    GuiProbe probe;
    signInWithoutRegistration(probe);
}

void TestDeviceKeyFlowFiles::fileInThePlaceOfTheDataDirectory()
{
    GuiProbe probe;
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QVERIFY(QDir(directory).removeRecursively());
    QVERIFY(writeTo(directory, "in the way"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Key pair error: ."_s));
    signInWithoutRegistration(probe);
    QVERIFY(QFile::remove(directory));
}

void TestDeviceKeyFlowFiles::blankPublicKeyFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("blanks and line ends") << QByteArray(" \t\r\n\v\f ");
}

void TestDeviceKeyFlowFiles::blankPublicKeyFile()
{
    QFETCH(QByteArray, content);
    placeKeyPair();
    QVERIFY(writeTo(crypto::publicKeyPath(), content));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Public key error: ?$"_s));
    QTest::failOnWarning(QRegularExpression(u"."_s));
    GuiProbe probe;
    signInWithoutRegistration(probe);
}

void TestDeviceKeyFlowFiles::publicKeyWithALineEnd()
{
    placeKeyPair();
    const QByteArray publicKey = contentOf(crypto::publicKeyPath());
    QVERIFY(writeTo(crypto::publicKeyPath(), publicKey + "\r\n"));
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    const auto sent = QJsonDocument::fromJson(probe.service.lastRequest("POST /api/chat/device-key").body);
    QCOMPARE(sent[u"publicKey"], QJsonValue(QString::fromLatin1(publicKey)));
}

TIDELOFT_GUI_TEST_MAIN(TestDeviceKeyFlowFiles)
#include "tst_device_key_flow_files.moc"
