#include "CheckList.h"

#include <algorithm>

namespace
{

using Class = Finding::Class;

struct Row {
    const char* id;
    Class findingClass;
    const char* summary;
    const char* advice;
};

constexpr Row rows[] = {
    {"bad-settings", Class::Error, "The file .textmanager-check.json cannot be understood.",
     "Correct it at the place that is named; what is wrong there is not heeded."},
    {"unreadable-file", Class::Error, "A file of the folder cannot be read.",
     "See who may read it, or move it away."},
    {"unfinished-pack", Class::Error,
     "The folder is a pack that was interrupted: some of its files are of an older one.",
     "Pack it again."},
    {"not-utf8", Class::Error, "A file holds bytes that are no UTF-8.", "Save it as UTF-8."},
    {"malformed-json", Class::Error, "A file is no JSON.",
     "Correct it at the place that is named. A comma or a quotation mark is missing or too many."},
    {"no-content", Class::Error, "A file has no \"Content\", below which texts stand.",
     "Put the texts below \"Content\", or move the file away."},
    {"wrong-type", Class::Error,
     "A \"text\" is a number, a \"childs\" is a string, or the like: it is not shown.",
     "Write texts in quotation marks, and nodes in braces."},
    {"repeated-key", Class::Error,
     "A key stands twice in one object, and only the last one counts.",
     "Remove one of them, or give it another name."},
    {"same-language-key", Class::Error,
     "Two files are of one language, and only one of them is loaded.", "Move one of them away."},
    {"placeholders-differ", Class::Error,
     "The text has other placeholders than the base's: values are lost or land in the wrong place.",
     "Use the placeholders of the base's text, as they are written there."},
    {"markup-differs", Class::Error,
     "A tag is opened and not closed, or the tags are other than the base's.",
     "Write the tags as the base does, each closed."},
    {"message-syntax", Class::Error, "A message with plurals or choices is not written as one.",
     "Correct it at the place that is named: a brace, a comma or \"other\" is missing."},
    {"plural-missing", Class::Error,
     "A plural of a message lacks a form that its language has, as Arabic has six.",
     "Add what is said for such numbers."},
    {"missing-text", Class::Warning, "The base has a text that the language lacks.",
     "Translate it; until then the fallback language is shown."},
    {"empty-text", Class::Warning, "A text is empty, and counts as untranslated.",
     "Translate it; until then the fallback language is shown."},
    {"stale-text", Class::Warning,
     "The base text has changed since the text was written, or marked as current.",
     "Translate it anew, or say with 'textmanager mark' that it is still right."},
    {"unknown-url", Class::Warning, "Neither the base nor POSIX has the URL of a text.",
     "Rename it if its key is misspelt; remove it if nobody asks for it any more."},
    {"unreachable-key", Class::Warning,
     "No URL leads to a node: its key is empty, holds \"/\" or begins with \"childs\", or it "
     "stands "
     "beside a \"childs\".",
     "Rename the key, or move the node into the \"childs\"."},
    {"data-differs", Class::Warning,
     "A web or mail address, or a number, of the base's text is not in the text.",
     "Take it over as it is; numbers as the language writes them."},
    {"line-breaks-differ", Class::Warning,
     "The text has more or fewer line breaks than the base's.",
     "Break it into as many lines as the base's."},
    {"short-text-too-long", Class::Warning, "A short text is longer than --short-length allows.",
     "Shorten it: abbreviate, or leave out what the display shows anyway."},
    {"too-long", Class::Warning, "The text is longer than the base's comment allows.",
     "Shorten it, or let the comment allow more where there is room."},
    {"same-as-base", Class::Info, "A text of three words or more is the base's letter for letter.",
     "Translate it; leave it empty until it is."},
    {"short-text-longer", Class::Info, "A short text is longer than its full text.",
     "Shorten or remove it; without it the full text is shown."},
    {"inconsistent-text", Class::Info,
     "Two texts of the base that are the same are translated differently.",
     "Choose one translation, if both mean the same."},
    {"edge-space", Class::Info,
     "The text begins or ends with a blank, or lacks one that the base's has there.",
     "Begin and end it as the base's."},
    {"double-space", Class::Info, "Two blanks follow each other.", "Leave one."},
    {"invisible-character", Class::Info,
     "There is a character that nobody sees and that does nothing there.", "Remove it."},
    {"end-punctuation", Class::Info, "The text ends with another mark than the base's.",
     "Let both end alike."},
    {"repeated-word", Class::Info, "A word stands twice in a row.", "Leave one."},
    {"missing-comment", Class::Info, "A text of the base has no comment for translators.",
     "Say where it stands, how long it may be, and what its placeholders are."},
};

} // namespace

const QVector<CheckDescription>& allChecks()
{
    static const QVector<CheckDescription> checks = [] {
        QVector<CheckDescription> list;
        for (const Row& row : rows)
            list.append({QLatin1String(row.id), row.findingClass, QLatin1String(row.summary),
                         QLatin1String(row.advice)});
        return list;
    }();
    return checks;
}

const CheckDescription* findCheck(const QString& id)
{
    const auto& checks = allChecks();
    const auto found = std::find_if(checks.begin(), checks.end(),
                                    [&](const CheckDescription& check) { return check.id == id; });
    return found == checks.end() ? nullptr : &*found;
}

QStringList allCheckIds()
{
    QStringList ids;
    for (const CheckDescription& check : allChecks())
        ids.append(check.id);
    return ids;
}

QString nameOf(Finding::Class findingClass)
{
    switch (findingClass) {
    case Class::Error:
        return QStringLiteral("error");
    case Class::Warning:
        return QStringLiteral("warning");
    case Class::Info:
        break;
    }
    return QStringLiteral("info");
}

bool readClass(const QString& name, Finding::Class& findingClass)
{
    for (const Class candidate : {Class::Error, Class::Warning, Class::Info}) {
        if (nameOf(candidate) != name)
            continue;
        findingClass = candidate;
        return true;
    }
    return false;
}
