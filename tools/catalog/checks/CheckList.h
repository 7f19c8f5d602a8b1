#pragma once

#include "Finding.h"

#include <QString>
#include <QStringList>
#include <QVector>

/** One kind of finding: what reports, help and documents say of it. */
struct CheckDescription {
    QString id;
    Finding::Class findingClass = Finding::Class::Error;
    QString summary; ///< what is found, as a sentence
    QString advice;  ///< what to do about it, as a sentence
};

/** All kinds of findings there are: those of files first, then by weight. */
const QVector<CheckDescription>& allChecks();

/** The one of that id; null when there is none. */
const CheckDescription* findCheck(const QString& id);
QStringList allCheckIds();

/** "error", "warning" or "info". */
QString nameOf(Finding::Class findingClass);
/** The class of that name; false when there is none. */
bool readClass(const QString& name, Finding::Class& findingClass);
