SUMMARY = "Texts in the user's language for embedded Linux devices, on Qt"
# The owners have chosen no licence yet.
LICENSE = "CLOSED"

# Set TEXTMANAGERLIBRARY_SOURCE in local.conf to a checkout of the sources; without it there is no such recipe.
TEXTMANAGERLIBRARY_SOURCE ??= ""
python () {
    if not d.getVar("TEXTMANAGERLIBRARY_SOURCE"):
        raise bb.parse.SkipRecipe("TEXTMANAGERLIBRARY_SOURCE is not set")
}
inherit externalsrc
EXTERNALSRC = "${TEXTMANAGERLIBRARY_SOURCE}"
EXTERNALSRC_BUILD = "${WORKDIR}/build"

DEPENDS = "qtbase qtbase-native dbus xxhash rapidjson utf8proc"

# cmake_qt5 of meta-qt5 finds the host's moc and the target's libraries.
inherit cmake_qt5 pkgconfig systemd useradd

PACKAGECONFIG ??= "messages"
PACKAGECONFIG[messages] = "-DCMAKE_DISABLE_FIND_PACKAGE_ICU=OFF,-DCMAKE_DISABLE_FIND_PACKAGE_ICU=ON,icu"
PACKAGECONFIG[quick] = "-DCMAKE_DISABLE_FIND_PACKAGE_Qt5Quick=OFF,-DCMAKE_DISABLE_FIND_PACKAGE_Qt5Quick=ON,qtdeclarative qtdeclarative-native"

EXTRA_OECMAKE = "-DTEXTMANAGER_QT_VERSION=5 -DBUILD_TESTING=OFF -DCMAKE_SKIP_INSTALL_RPATH=ON"

# Where /lib is a folder of its own, systemd's units stand there.
do_install:append() {
    if [ "${nonarch_base_libdir}" != "${nonarch_libdir}" ]; then
        install -d ${D}${nonarch_base_libdir}
        mv ${D}${nonarch_libdir}/systemd ${D}${nonarch_base_libdir}
    fi
}

# The service starts when it is called on the bus.
SYSTEMD_PACKAGES = "${PN}-tools"
SYSTEMD_SERVICE:${PN}-tools = "device-simulator.service"
SYSTEMD_AUTO_ENABLE = "disable"
USERADD_PACKAGES = "${PN}-tools"
USERADD_PARAM:${PN}-tools = "--system --user-group --no-create-home --shell /sbin/nologin \
    --home-dir ${localstatedir}/lib/device-manager device-manager"

PACKAGES =+ "${PN}-tools ${PN}-platform ${PN}-messages ${PN}-quick"
FILES:${PN}-platform = "${libdir}/libTextManagerReferencePlatform.so.*"
FILES:${PN}-messages = "${libdir}/libTextManagerMessages.so.*"
FILES:${PN}-quick = "${libdir}/libTextManagerQuick.so.* ${libdir}/qt5/qml"
FILES:${PN}-tools = "${bindir} ${datadir}/dbus-1/system.d ${datadir}/dbus-1/system-services \
    ${datadir}/bash-completion ${datadir}/zsh ${datadir}/fish \
    ${systemd_system_unitdir} ${nonarch_libdir}/sysusers.d"
FILES:${PN}-dev += "${datadir}/dbus-1/interfaces ${libdir}/cmake"
