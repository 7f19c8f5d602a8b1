################################################################################
#
# textmanagerlibrary
#
################################################################################

TEXTMANAGERLIBRARY_VERSION = 0.1.0
TEXTMANAGERLIBRARY_SITE = $(call qstrip,$(BR2_PACKAGE_TEXTMANAGERLIBRARY_SOURCE))
TEXTMANAGERLIBRARY_SITE_METHOD = local
TEXTMANAGERLIBRARY_INSTALL_STAGING = YES
# The owners have chosen no licence yet.
TEXTMANAGERLIBRARY_LICENSE = unknown
TEXTMANAGERLIBRARY_REDISTRIBUTE = NO
TEXTMANAGERLIBRARY_DEPENDENCIES = qt5base dbus xxhash host-pkgconf
TEXTMANAGERLIBRARY_CONF_OPTS = \
	-DTEXTMANAGER_QT_VERSION=5 \
	-DBUILD_TESTING=OFF \
	-DCMAKE_SKIP_INSTALL_RPATH=ON

ifeq ($(BR2_PACKAGE_TEXTMANAGERLIBRARY_TOOLS),y)
TEXTMANAGERLIBRARY_DEPENDENCIES += rapidjson utf8proc
TEXTMANAGERLIBRARY_CONF_OPTS += -DTEXTMANAGER_BUILD_TOOLS=ON

# It owns the bus name of the service, and the file behind it.
define TEXTMANAGERLIBRARY_USERS
	device-manager -1 device-manager -1 * /var/lib/device-manager - - Configuration service of the device
endef
else
TEXTMANAGERLIBRARY_CONF_OPTS += -DTEXTMANAGER_BUILD_TOOLS=OFF
endif

ifeq ($(BR2_PACKAGE_ICU),y)
TEXTMANAGERLIBRARY_DEPENDENCIES += icu
else
TEXTMANAGERLIBRARY_CONF_OPTS += -DCMAKE_DISABLE_FIND_PACKAGE_ICU=ON
endif

ifeq ($(BR2_PACKAGE_QT5DECLARATIVE_QUICK),y)
TEXTMANAGERLIBRARY_DEPENDENCIES += qt5declarative
else
TEXTMANAGERLIBRARY_CONF_OPTS += -DCMAKE_DISABLE_FIND_PACKAGE_Qt5Quick=ON
endif

$(eval $(cmake-package))
