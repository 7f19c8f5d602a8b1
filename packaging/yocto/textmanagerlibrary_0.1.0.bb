SUMMARY = "Texts in the user's language for embedded Linux devices, on Qt"
# The owners have chosen no licence yet.
LICENSE = "CLOSED"

# Set TEXTMANAGERLIBRARY_SOURCE in local.conf to a checkout of the sources.
inherit externalsrc
EXTERNALSRC = "${TEXTMANAGERLIBRARY_SOURCE}"
EXTERNALSRC_BUILD = "${WORKDIR}/build"

DEPENDS = "qtbase qtbase-native dbus xxhash rapidjson utf8proc"

# cmake_qt5 of meta-qt5 finds the host's moc and the target's libraries.
inherit cmake_qt5 pkgconfig features_check
REQUIRED_DISTRO_FEATURES = "dbus"

PACKAGECONFIG ??= "messages"
PACKAGECONFIG[messages] = "-DCMAKE_DISABLE_FIND_PACKAGE_ICU=OFF,-DCMAKE_DISABLE_FIND_PACKAGE_ICU=ON,icu"
PACKAGECONFIG[quick] = "-DCMAKE_DISABLE_FIND_PACKAGE_Qt5Quick=OFF,-DCMAKE_DISABLE_FIND_PACKAGE_Qt5Quick=ON,qtdeclarative qtdeclarative-native"

EXTRA_OECMAKE = "-DTEXTMANAGER_QT_VERSION=5 -DBUILD_TESTING=OFF -DCMAKE_SKIP_INSTALL_RPATH=ON"

PACKAGES =+ "${PN}-tools ${PN}-platform ${PN}-messages ${PN}-quick"
FILES:${PN}-platform = "${libdir}/libTextManagerReferencePlatform.so.*"
FILES:${PN}-messages = "${libdir}/libTextManagerMessages.so.*"
FILES:${PN}-quick = "${libdir}/libTextManagerQuick.so.* ${libdir}/qt5/qml"
FILES:${PN}-tools = "${bindir} ${datadir}/dbus-1/system.d ${datadir}/dbus-1/system-services \
    ${datadir}/bash-completion ${datadir}/zsh ${datadir}/fish \
    ${prefix}/lib/systemd/system ${prefix}/lib/sysusers.d"
FILES:${PN}-dev += "${datadir}/dbus-1/interfaces ${libdir}/cmake"
