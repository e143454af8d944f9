# The two Debian packages that cpack makes of the installed files: see packaging/packages.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tideloft)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_VENDOR "TideLoft")
set(CPACK_PACKAGE_CONTACT "${TIDELOFT_MAINTAINER}")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
# Configuration lies outside the prefix; what is made for /usr is installed below another root.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL client service)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

string(REGEX REPLACE "^https?://" "" service_host "${TIDELOFT_SERVICE_URL}")
set(CPACK_DEBIAN_CLIENT_PACKAGE_NAME tideloft)
set(CPACK_DEBIAN_CLIENT_PACKAGE_SECTION net)
set(CPACK_DEBIAN_CLIENT_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_CLIENT_PACKAGE_DEPENDS "fonts-open-sans, fonts-noto-color-emoji, fonts-dejavu-core")
# Of the two plugins for the desktop's own file dialog, GNOME, Xfce, MATE and Cinnamon load the one with GTK by
# themselves; the one for portals waits for an environment variable or a sandbox.
set(CPACK_DEBIAN_CLIENT_PACKAGE_RECOMMENDS
    "ca-certificates, qt6-gtk-platformtheme, qt6-translations-l10n, qt6-wayland")
set(CPACK_DEBIAN_CLIENT_PACKAGE_SUGGESTS "qt6-image-formats-plugins, tideloftd")
set(CPACK_COMPONENT_CLIENT_DESCRIPTION "desktop client of an end-to-end encrypted chat service
Messages are encrypted on the computer where they are written, once for each
of the recipient's devices. The service stores and passes on what it cannot
read.
.
The window speaks Swedish and English.
.
This client was built for the service at
${service_host}.")

set(CPACK_DEBIAN_SERVICE_PACKAGE_NAME tideloftd)
set(CPACK_DEBIAN_SERVICE_PACKAGE_SECTION net)
set(CPACK_DEBIAN_SERVICE_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_SERVICE_PACKAGE_DEPENDS libqt6sql6-sqlite)
set(CPACK_DEBIAN_SERVICE_PACKAGE_RECOMMENDS libqt6sql6-psql)
set(CPACK_DEBIAN_SERVICE_PACKAGE_SUGGESTS tideloft)
set(CPACK_COMPONENT_SERVICE_DESCRIPTION "service of an end-to-end encrypted chat
Keeps accounts, public keys, servers and pictures for the users of TideLoft,
and relays messages that it cannot read.
.
It starts with the system once there is a certificate for it.")
file(WRITE "${PROJECT_BINARY_DIR}/packaging/conffiles" "${CMAKE_INSTALL_FULL_SYSCONFDIR}/tideloft/tideloftd.conf\n")
set(CPACK_DEBIAN_SERVICE_PACKAGE_CONTROL_EXTRA "${PROJECT_BINARY_DIR}/packaging/conffiles"
    "${PROJECT_SOURCE_DIR}/packaging/debian/postinst"
    "${PROJECT_SOURCE_DIR}/packaging/debian/prerm"
    "${PROJECT_SOURCE_DIR}/packaging/debian/postrm")
include(CPack)
