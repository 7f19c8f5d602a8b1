#include "CommandLine.h"
#include "Commands.h"
#include "EditResult.h"
#include "LanguageFileEditor.h"
#include "TextNodes.h"

#include "LanguageDefinitions.h"

namespace
{

/** Writes one field of the header. @return whether that was possible; a message says why not. */
bool writeField(const QString& field, const QString& value, LanguageFileEditor& editor,
                QVector<EditChange>& changes)
{
    const QStringList path = {LanguageDefinitions::getJsonHeaderName(), field};
    const QJsonValue before = valueAt(path, editor.document());
    const QString obstacle = writeString(path, value, editor.document());
    if (!obstacle.isEmpty()) {
        printMessage(QStringLiteral("%1: the header's %2 cannot be written: %3. Nothing was "
                                    "changed.")
                         .arg(editor.filePath(), field, obstacle));
        return false;
    }
    changes.append(changeOf(field, before, value));
    return true;
}

} // namespace

ExitStatus runSetHeader(const QStringList& words)
{
    const QString language = QStringLiteral("language-name");
    const QString subLanguage = QStringLiteral("sub-language");
    CommandLine commandLine(
        QStringLiteral("set-header DIR LANGUAGE"),
        QStringLiteral("Writes the header of the file of LANGUAGE in the folder DIR. The exit "
                       "status is 1, and nothing is changed, when something else is in a field's "
                       "place."));
    commandLine.addValueOption(language, QStringLiteral("NAME"),
                               QStringLiteral("The header's language."));
    commandLine.addValueOption(subLanguage, QStringLiteral("NAME"),
                               QStringLiteral("The header's sub-language."));
    if (const auto status = commandLine.parse(words))
        return *status;
    if (!commandLine.isSet(language) && !commandLine.isSet(subLanguage))
        return commandLine.refuse(
            QStringLiteral("--%1 or --%2 is missing.").arg(language, subLanguage));

    const QStringList arguments = commandLine.arguments();
    const auto editor = LanguageFileEditor::open(arguments.at(0), arguments.at(1));
    if (!editor)
        return UnusableInput;
    QVector<EditChange> changes;
    const auto write = [&](const QString& option, const QString& field) {
        return !commandLine.isSet(option) ||
               writeField(field, commandLine.value(option), *editor, changes);
    };
    if (!write(language, LanguageDefinitions::getJsonHeaderLanguageKey()) ||
        !write(subLanguage, LanguageDefinitions::getJsonHeaderSubLanguageKey()))
        return AnswerIsNo;
    return saveAndPrint(*editor, changes, commandLine.isJsonWanted());
}
