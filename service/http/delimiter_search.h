// The search for the delimiter of a form, in time that no sender can stretch.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>

#include <algorithm>
#include <iterator>

namespace tideloft::service
{

/// The first place at which DELIMITER stands, or END. It must begin with a carriage return and hold no
/// other (RFC 2046, section 5.1.1), so near misses never overlap by more than that one character, and none is
/// read more than three times whatever the sender repeats.
template <typename Iterator> Iterator findDelimiter(Iterator begin, Iterator end, QByteArrayView delimiter)
{
    for (Iterator at = std::find(begin, end, '\r'); at != end; at = std::find(std::next(at), end, '\r')) {
        if (std::mismatch(at, end, delimiter.begin(), delimiter.end()).second == delimiter.end())
            return at;
    }
    return end;
}

} // namespace tideloft::service
