// Taking the host out of the service's address.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/service_host.h"

#include "net/service_endpoint.h"

#include <QUrl>

namespace tideloft::net
{

QString serviceHost()
{
    return QUrl(serviceBaseUrl()).authority();
}

} // namespace tideloft::net
