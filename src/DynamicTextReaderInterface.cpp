#include "DynamicTextReaderInterface.h"

DynamicTextReaderInterface::DynamicTextReaderInterface(const QString& otherfilesPath)
    : m_StrOtherfilesPath(otherfilesPath)
{
}

DynamicTextReaderInterface::~DynamicTextReaderInterface() = default;

QString DynamicTextReaderInterface::getOtherfilesPath() const
{
    return m_StrOtherfilesPath;
}
