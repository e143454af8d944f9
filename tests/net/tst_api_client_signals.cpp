// The client's interface towards the window: its signals, whose order later numbers rely on.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"
#include "tests/support/test_main.h"

#include <QMetaMethod>

using tideloft::net::ApiClient;

class TestApiClientSignals : public QObject
{
    Q_OBJECT

private slots:
    void allTwentySevenInTheirOrder();
    void nothingButSignals();
};

void TestApiClientSignals::allTwentySevenInTheirOrder()
{
    const QList<QByteArray> expected{
        "loginSucceeded(QString)",
        "loginFailed(QString)",
        "registerSucceeded(QString)",
        "registerFailed(QString)",
        "meLoaded(QJsonObject)",
        "meFailed(QString)",
        "searchLoaded(QJsonArray)",
        "searchFailed(QString)",
        "conversationsLoaded(QJsonArray)",
        "conversationsFailed(QString)",
        "historyLoaded(QString,QJsonArray)",
        "historyFailed(QString)",
        "deviceKeyRegistered()",
        "deviceKeyRegisterFailed(QString)",
        "myDeviceKeysLoaded(QJsonArray)",
        "myDeviceKeysFailed(QString)",
        "userPublicKeysLoaded(QString,QJsonArray,QString)",
        "userPublicKeysFailed(QString,QString)",
        "messageSent()",
        "messageSendFailed(QString)",
        "networkError(QString)",
        "avatarUploaded(bool,QString)",
        "serversLoaded(QJsonArray)",
        "serverLoaded(QJsonObject)",
        "serverCreated(QJsonObject)",
        "serverIconUploaded(QString,QString)",
        "serversFailed(QString)",
    };
    const QMetaObject &meta = ApiClient::staticMetaObject;
    QList<QByteArray> declared;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        declared.append(meta.method(index).methodSignature());
    QCOMPARE(declared, expected);
}

void TestApiClientSignals::nothingButSignals()
{
    const QMetaObject &meta = ApiClient::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 27);
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        QCOMPARE(meta.method(index).methodType(), QMetaMethod::Signal);
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
}

TIDELOFT_TEST_MAIN(TestApiClientSignals)
#include "tst_api_client_signals.moc"
