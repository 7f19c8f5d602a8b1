#include "SystemInformationManagerDefinitions.h"

const QString& SystemInformationManagerDefinitions::getObjectNameConfiguration()
{
    static const QString name = QStringLiteral("Configuration");
    return name;
}
