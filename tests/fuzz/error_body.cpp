// Fuzzing of error bodies: the text that a failed request gives to the user.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"
#include "net/json_reply.h"
#include "tests/fuzz/json_input.h"
#include "tests/fuzz/require.h"

#include <QNetworkReply>

using namespace tideloft::net;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

namespace
{

// The client keeps this to itself. An explicit instantiation may name what is private.
template <auto Member> struct Revealed {
    friend QString errorMessageOf(const QJsonDocument &document) { return Member(document); }
};
template struct Revealed<&ApiClient::extractErrorMessage>;
QString errorMessageOf(const QJsonDocument &document);

// A reply that has finished with a body that is there already.
class FinishedReply : public QNetworkReply
{
public:
    FinishedReply(QByteArray bytes, int status) : body(std::move(bytes))
    {
        setAttribute(QNetworkRequest::HttpStatusCodeAttribute, status);
        open(QIODevice::ReadOnly);
        setFinished(true);
    }
    void abort() override {}
    [[nodiscard]] qint64 bytesAvailable() const override
    {
        return QNetworkReply::bytesAvailable() + body.size() - position;
    }

protected:
    qint64 readData(char *to, qint64 most) override
    {
        const qint64 count = qMin(most, static_cast<qint64>(body.size()) - position);
        if (count <= 0)
            return -1;
        std::copy_n(body.constData() + position, count, to);
        position += count;
        return count;
    }

private:
    const QByteArray body;
    qint64 position = 0;
};

QString wantedMessage(const QJsonObject &error)
{
    const QString member = error.contains(u"message"_s) ? u"message"_s : u"error"_s;
    return error.contains(member) ? error.value(member).toString() : u"Unknown error"_s;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const int status = 400 + static_cast<int>(size % 200);
    FinishedReply reply(rawInput(data, size), status);
    const JsonReply read = readJsonReply(reply);
    require(read.httpStatus == status, "the status is the reply's");
    require(read.document == jsonInput(data, size), "the whole body is read");
    const QString message = errorMessageOf(read.document);
    require(message == wantedMessage(read.document.object()), "the message, or else the error, is the text");
    require(message == u"Unknown error"_s || message.size() <= static_cast<qsizetype>(size),
            "a text is no longer than its body");
    return 0;
}
