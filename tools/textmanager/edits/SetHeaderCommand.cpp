#include "CommandLine.h"
#include "Commands.h"
#include "EditResult.h"
#include "Folders.h"
#include "TextNodes.h"

#include "LanguageDefinitions.h"

namespace
{

const QLatin1String languageNameOption("language-name");
const QLatin1String subLanguageOption("sub-language");

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

ExitStatus runSetHeader(const CommandLine& commandLine)
{
    if (!commandLine.isSet(languageNameOption) && !commandLine.isSet(subLanguageOption))
        return commandLine.refuse(
            QStringLiteral("--%1 or --%2 is missing.").arg(languageNameOption, subLanguageOption));

    const QStringList arguments = commandLine.arguments();
    const auto editor = openEditor(arguments.at(0), arguments.at(1));
    if (!editor)
        return UnusableInput;
    QVector<EditChange> changes;
    const auto write = [&](const QString& option, const QString& field) {
        return !commandLine.isSet(option) ||
               writeField(field, commandLine.value(option), *editor, changes);
    };
    if (!write(languageNameOption, LanguageDefinitions::getJsonHeaderLanguageKey()) ||
        !write(subLanguageOption, LanguageDefinitions::getJsonHeaderSubLanguageKey()))
        return AnswerIsNo;
    return saveAndPrint(*editor, changes, commandLine);
}

} // namespace

Command setHeaderCommand()
{
    return {
        {QStringLiteral("set-header DIR LANGUAGE"),
         QStringLiteral("write the header of a language"),
         QStringLiteral(
             "Writes the header of the file of LANGUAGE in the folder DIR. The exit status is 1, "
             "and nothing is changed, when something else is in a field's place."),
         {{languageNameOption, QStringLiteral("NAME"), QStringLiteral("The header's language.")},
          {subLanguageOption, QStringLiteral("NAME"), QStringLiteral("The header's sub-language.")},
          dryRunOption()},
         QStringLiteral("textmanager set-header languages de_DE --sub-language Schweiz")},
        runSetHeader};
}
