#pragma once

#include <QByteArray>
#include <QString>

/**
 * Gives the open file @p newFile what belongs to the file at @p oldPath beside its bytes: owner,
 * permissions, access control list, extended attributes.
 *
 * Only root may give a file away; for others it becomes theirs, as with any editor. Where the group
 * cannot be kept either, the new group gets no right that the old one and everyone did not have.
 *
 * @return why an access control list or an attribute of the user cannot be kept; empty when all is.
 */
QString keepAttributes(const QByteArray& oldPath, int newFile);
