#pragma once

#include "KeyTree.h"
#include "TextKey.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVector>

// Sources in which each text URL of a language folder is a constant, so that a misspelt one is an
// error and an editor completes it. The same texts give the same bytes.

/**
 * A C++ header: nested namespaces below @p namespaceName, with a constant for each URL that turns
 * into a QString without an allocation. A text that has others below it is called "self" in the
 * namespace that its key names.
 */
QByteArray generateKeyHeader(const QVector<KeyText>& texts, const QString& namespaceName);

/**
 * A QML singleton: nested objects whose properties begin with a lower-case letter, as QML wants it;
 * "self" as in the header.
 */
QByteArray generateKeySingleton(const QVector<KeyText>& texts);

/** The URLs of the header's constants by their names within its namespace: "Menu::Save". */
QHash<TextKey, QString> keyHeaderNames(const QVector<KeyText>& texts);
/** The URLs of the singleton's properties by their names: "menu.save". */
QHash<TextKey, QString> keySingletonNames(const QVector<KeyText>& texts);

/** Whether a name can be that of a C++ namespace, or of several nested ones joined with "::". */
bool isNamespaceName(const QString& name);
