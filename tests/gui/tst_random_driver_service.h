// A service that answers at random: well, badly, with hostile texts, late or not at all.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/hostile_texts.h"
#include "tests/support/loopback_service.h"

#include <QJsonArray>
#include <QRandomGenerator>

namespace tideloft::tests
{

/// Choices that are the same again for the same seed.
class RandomChoice
{
public:
    explicit RandomChoice(quint32 seed) : generator(seed) {}
    int below(qsizetype limit) { return int(generator.bounded(int(limit))); }
    bool oneIn(int chances) { return below(chances) == 0; }
    template <typename List> auto from(const List &list) { return list[below(list.size())]; }

private:
    QRandomGenerator generator;
};

/// Gives SERVICE another answer for one of its endpoints each time.
class RandomService
{
public:
    RandomService(LoopbackService &loopback, RandomChoice &random);

    /// Messages that this client can open; they are mixed into lists and histories from then on.
    void setSealed(const QList<QJsonObject> &messages) { sealed = messages; }
    void answerAtRandom(); ///< from now on, for one endpoint
    void holdAtRandom();   ///< one endpoint's requests wait
    void releaseAll();     ///< whatever waits is answered
    void answerWell();     ///< every endpoint, and nothing waits
    /// The history that KEY asks for has more messages than are opened at once, or than have widgets.
    void answerAtLength(const QByteArray &key);
    QString anyText(); ///< plain or hostile

    static const QStringList &peers();

private:
    QByteArray bodyFor(const QByteArray &key);
    QJsonArray messages();
    QJsonArray longHistory();
    QJsonArray conversations();
    QJsonArray records(const QStringList &members);
    QJsonValue anyValue(int depth);
    QByteArray anyBytes();
    QString longOrShort(const QString &text);

    LoopbackService &service;
    RandomChoice &choose;
    QStringList texts;
    QList<QJsonObject> sealed;
    QSet<QByteArray> held;
};

} // namespace tideloft::tests
