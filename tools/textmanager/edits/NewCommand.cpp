#include "CommandLine.h"
#include "Commands.h"
#include "EditResult.h"
#include "Folders.h"

#include "LanguageDefinitions.h"
#include "LanguageInformation.h"

namespace
{

const QLatin1String fromOption("from");

/** A copy of a node and all below it, their texts empty. */
QJsonObject withoutTexts(QJsonObject node)
{
    for (auto member = node.begin(); member != node.end(); ++member) {
        if (member.value().isObject())
            member.value() = withoutTexts(member.value().toObject());
        else if (member.value().isString() &&
                 member.key() == LanguageDefinitions::getJsonTextName())
            member.value() = QString();
    }
    return node;
}

QJsonObject newDocument(const QString& language, const QJsonObject& source)
{
    const QString& content = LanguageDefinitions::getJsonContentName();
    const QJsonObject header{{LanguageDefinitions::getJsonHeaderLanguageKey(), language},
                             {LanguageDefinitions::getJsonHeaderSubLanguageKey(), QString()}};
    return {{LanguageDefinitions::getJsonHeaderName(), header},
            {content, withoutTexts(source.value(content).toObject())}};
}

ExitStatus runNew(const CommandLine& commandLine)
{

    const QStringList arguments = commandLine.arguments();
    QJsonObject source;
    if (commandLine.isSet(fromOption)) {
        const auto sourceEditor = openEditor(arguments.at(0), commandLine.value(fromOption));
        if (!sourceEditor)
            return UnusableInput;
        source = sourceEditor->document();
    }
    const auto editor = createEditor(arguments.at(0), arguments.at(1));
    if (!editor)
        return UnusableInput;
    editor->document() = newDocument(arguments.at(1), source);

    QVector<EditChange> changes;
    for (const QString& url : LanguageInformation().getAvailableUrls(editor->document()))
        changes.append({QStringLiteral("added"), url});
    return saveAndPrint(*editor, changes, commandLine);
}

} // namespace

Command newCommand()
{
    return {{QStringLiteral("new DIR LANGUAGE"),
             QStringLiteral("start a language with the URLs of another"),
             QStringLiteral("Starts the file of LANGUAGE in the folder DIR, with LANGUAGE in its "
                            "header. An existing language is left alone."),
             {{fromOption, QStringLiteral("KEY"),
               QStringLiteral("Take over the URLs and comments of this language, the texts empty; "
                              "without it, there are none.")},
              dryRunOption()},
             QStringLiteral("textmanager new languages it_IT --from en_US")},
            runNew};
}
