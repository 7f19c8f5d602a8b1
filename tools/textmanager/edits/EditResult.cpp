#include "EditResult.h"

#include <QJsonArray>

EditChange changeOf(const QString& name, const QJsonValue& before, const QJsonValue& after)
{
    if (before.isUndefined())
        return {QStringLiteral("added"), name};
    return {before == after ? QStringLiteral("unchanged") : QStringLiteral("changed"), name};
}

ExitStatus saveAndPrint(LanguageFileEditor& editor, const QVector<EditChange>& changes,
                        bool isJsonWanted)
{
    if (!editor.save())
        return UnusableInput;
    QJsonArray list;
    for (const EditChange& change : changes) {
        if (!isJsonWanted)
            printResult(QStringLiteral("%1 %2").arg(change.change, change.name));
        list.append(QJsonObject{{QStringLiteral("change"), change.change},
                                {QStringLiteral("name"), change.name}});
    }
    if (isJsonWanted)
        printResult(
            {{QStringLiteral("file"), editor.filePath()}, {QStringLiteral("changes"), list}});
    return Done;
}
