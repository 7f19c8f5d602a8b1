#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

// What the programs say of themselves. Help, pages of the manual and completion are made of it.

/** One option of a command. */
struct OptionDescription {
    QString name;                        ///< without the dashes
    QString valueName;                   ///< in capitals, as for arguments; empty for a switch
    QString summary;                     ///< what it does: sentences
    QString defaultValue = QString();    ///< empty when there is none
    QStringList choices = QStringList(); ///< the values that there are; empty when any will do
    QString shortName = QString();       ///< one letter; empty when there is none
    bool isRequired = false;
};

/**
 * One command, or a program that has none.
 *
 * The names of its arguments, and of the values of its options, also say what is offered to
 * complete them: DIR is a folder of language files, FILE a file, KEY and LANGUAGE the key of a
 * language, URL and NEW-URL the URL of a text.
 */
struct CommandDescription {
    /** Name and arguments, as in "get DIR URL..."; the last one may be given several times when it
     * ends in "...", and left out when it stands in "[]". */
    QString usage;
    QString summary; ///< a few words: "print texts"
    QString text;    ///< paragraphs, with an empty line between two of them
    QVector<OptionDescription> options;
    QString example; ///< command lines, one a line

    QString name() const { return usage.section(QLatin1Char(' '), 0, 0); }
    QStringList argumentNames() const { return usage.split(QLatin1Char(' ')).mid(1); }
};

/** A program that has commands. */
struct ProgramDescription {
    QString name;
    QString summary; ///< a few words
    QString text;    ///< paragraphs, with an empty line between two of them
    QVector<CommandDescription> commands;
};

/** "-h, --help", which every command and program has. */
OptionDescription helpOption();
