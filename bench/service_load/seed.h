// A database with users who have talked already, and the requests that they make.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <string>
#include <vector>

namespace tideloft::bench
{

struct SeededUser {
    std::string name;
    std::string peer; ///< with whom all messages are; two users are each other's
    std::string cookie;
};

/// Makes the database at PLACE with so many users, who are signed in, and so many messages between each two.
std::vector<SeededUser> seed(const QString &place, int users, int messagesOfTwo);

/// With the headers that the client sends. ETAG may be empty.
std::string getRequest(const SeededUser &user, const std::string &path, const std::string &etag = {});
std::string historyRequest(const SeededUser &user, const std::string &etag = {});
std::string conversationsRequest(const SeededUser &user, const std::string &etag = {});

/// A sealed message whose nonce is made of NUMBER and of nothing else.
std::string sendRequest(const SeededUser &user, std::uint64_t number);

/// The nonce as it is stored.
std::string nonceText(std::uint64_t number);

std::string postRequest(const std::string &path, const std::string &cookie, const std::string &body);

} // namespace tideloft::bench
