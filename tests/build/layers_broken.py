#!/usr/bin/env python3
"""Whether the check of the layers sees what it is there for: each offence is planted once, in memory.

Usage: layers_broken.py ROOT
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import sys
from pathlib import Path

import layers

PLANTED = (
    ("a page that knows the app", "ui/texts/initials.cpp", '#include "app/fonts.h"'),
    ("encryption that knows the network", "crypto/cipher/aes_gcm.cpp", '#include "net/json_reply.h"'),
    ("encryption that knows the toolkit's network", "crypto/cipher/aes_gcm.cpp", "#include <QNetworkReply>"),
    ("a style that knows a page", "ui/style/accent.cpp", '#include "ui/texts/initials.h"'),
    ("a page that knows another", "ui/chat/message_row.cpp", '#include "ui/rail/server_button.h"'),
    ("a page that knows encryption", "ui/chat/message_row.cpp", '#include "crypto/messages/open_message.h"'),
    ("a page that knows the service", "ui/settings/settings_rows.cpp", '#include "net/api_client.h"'),
    ("rows that know a page", "ui/messages/history_row_models.cpp", '#include "ui/chat/message_row.h"'),
    ("a tool that knows the window", "ui/widgets/message_box.cpp", '#include "ui/main_window.h"'),
    ("a handler that listens", "service/api/api.cpp", '#include "service/http/server.h"'),
    ("SQL in a handler", "service/api/api.cpp", "#include <QSqlQuery>"),
    ("JSON in the store", "service/store/users.cpp", "#include <QJsonObject>"),
    ("administration that knows an endpoint", "service/control/main.cpp", '#include "service/api/random.h"'),
    ("a store that knows HTTP", "service/store/users.h", '#include "service/http/exchange.h"'),
    ("HTTP that knows the store", "service/http/server.cpp", '#include "service/store/users.h"'),
    ("a file of the system opened by the network", "net/image_upload.cpp", "#include <fcntl.h>"),
    ("permissions in the window", "ui/main_window.cpp", "#include <sys/stat.h>"),
    ("a directory of the system in the encryption", "crypto/keys/key_store.cpp", "#include <unistd.h>"),
    ("memory of the system in a cipher", "crypto/cipher/openssl_memory.cpp", "#include <malloc.h>"),
    ("limits of the system at the start", "app/start_up.cpp", "#include <sys/resource.h>"),
    ("a lock of the system beside the header for it", "local_files/directory_lock.cpp", "#include <sys/file.h>"),
    ("a descriptor of the system in a header", "local_files/system.h", "#include <sys/types.h>"),
    ("signals in the program", "app/main.cpp", "#include <csignal>"),
    ("a terminal in the administration", "service/control/password_input.cpp", "#include <termios.h>"),
    ("files of the system at the service's start", "service/main.cpp", "#include <sys/stat.h>"),
    ("a descriptor in the store's maintenance", "service/store/maintenance.cpp", "#include <unistd.h>"),
    ("priorities of the system among the threads", "service/threads/workers.cpp", "#include <sys/resource.h>"),
    ("the toolkit in the process", "service/system/process.h", "#include <QString>"),
    ("a store that knows the process", "service/store/users.cpp", '#include "service/system/process.h"'),
    ("C instead of C++", "ui/texts/initials.cpp", "#include <string.h>"),
    ("local files that know keys", "local_files/regular_file.cpp", '#include "crypto/cipher/secret_bytes.h"'),
    ("a cipher that knows local files", "crypto/cipher/aes_gcm.cpp", '#include "local_files/regular_file.h"'),
    ("keys that know messages", "crypto/keys/key_store.cpp", '#include "crypto/messages/envelope.h"'),
    ("a cipher that knows keys", "crypto/cipher/aes_gcm.h", '#include "crypto/keys/key_pair.h"'),
    ("two headers that include each other", "service/store/database.h", '#include "service/store/schema.h"'),
    ("a source that includes what includes its header", "crypto/messages/key_wrapping.cpp",
     '#include "crypto/messages/envelope_sealing.h"'),
    ("a circle of three", "service/store/database.h", '#include "service/store/groups.h"'),
)


def main():
    files = layers.sources(Path(sys.argv[1]))
    missed = []
    for name, path, line in PLANTED:
        broken = dict(files)
        broken[path] = files[path] + "\n" + line + "\n"
        if not [*layers.wrong_includes(broken), *layers.circles(broken)]:
            missed.append(name)
    if missed:
        sys.exit("The check of the layers does not see:\n  " + "\n  ".join(missed))
    print(f"{len(PLANTED)} planted offences were seen")


if __name__ == "__main__":
    main()
