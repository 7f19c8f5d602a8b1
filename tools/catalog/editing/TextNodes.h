#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

// Finds and changes the nodes of a language document where they are stored.

/**
 * The keys, from the document's top, under which the node at @p textUrl is stored: where look-ups
 * find it or, when it is not there, where they will. A node whose children stand in it without a
 * container gets further ones in the same way, since a container would hide them.
 */
QStringList storagePathOf(const QString& textUrl, const QJsonObject& document);

/** The value at a storage path; undefined when there is none. */
QJsonValue valueAt(const QStringList& path, const QJsonObject& document);

/** Why a new node cannot have @p textUrl; empty when it can. */
QString findUnusableKey(const QString& textUrl);

/**
 * Writes a string at a storage path and creates what is missing on the way.
 *
 * @return why it could not be written: what is there instead. Empty when it is written.
 */
QString writeString(const QStringList& path, const QString& value, QJsonObject& document);

/**
 * Inserts a node at a storage path where nothing is, and creates what is missing on the way.
 *
 * @return why it could not be inserted: what is in its way. Empty when it is.
 */
QString insertObject(const QStringList& path, const QJsonObject& node, QJsonObject& document);

/** Removes the member at a storage path, and the child container that it leaves empty. */
void removeMember(const QStringList& path, QJsonObject& document);
