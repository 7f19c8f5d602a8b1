#include "CheckSettings.h"

#include "CheckList.h"
#include "JsonTree.h"
#include "LanguageReading.h"
#include "NearestNames.h"
#include "RegularFile.h"

#include "LanguageDefinitions.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace
{

QStringList knownKeys()
{
    return {QStringLiteral("base"),   QStringLiteral("shortFolder"), QStringLiteral("shortLength"),
            QStringLiteral("failOn"), QStringLiteral("failUnder"),   QStringLiteral("ignore")};
}

/** Takes the members of the settings' object over, and notes what it cannot take. */
class SettingsReader
{
public:
    SettingsReader(const JsonTree& tree, CheckSettings& settings)
        : m_Tree(tree)
        , m_Settings(settings)
    {
    }

    QVector<Finding> read()
    {
        if (m_Tree.fault()) {
            add({m_Tree.fault()->line, m_Tree.fault()->column},
                m_Tree.fault()->reason + QStringLiteral(". Correct it there."));
            return m_Findings;
        }
        if (!m_Tree.isObject(JsonTree::root)) {
            refuse(JsonTree::root, QStringLiteral("expected an object in braces."));
            return m_Findings;
        }
        for (int member = m_Tree.firstChild(JsonTree::root); member != JsonTree::none;
             member = m_Tree.at(member).nextSibling)
            readMember(member);
        return m_Findings;
    }

private:
    void readMember(int member)
    {
        const QString key = m_Tree.keyOf(member);
        if (m_Tree.at(member).isReplaced)
            add(m_Tree.keyPlace(member), QStringLiteral("\"%1\" stands there twice.").arg(key));
        else if (key == QLatin1String("base"))
            readString(member, m_Settings.base);
        else if (key == QLatin1String("shortFolder"))
            readShortFolder(member);
        else if (key == QLatin1String("shortLength"))
            readShortLength(member);
        else if (key == QLatin1String("failOn"))
            readFailOn(member);
        else if (key == QLatin1String("failUnder"))
            readFailUnder(member);
        else if (key == QLatin1String("ignore"))
            readIgnore(member);
        else
            add(m_Tree.keyPlace(member), QStringLiteral("there is no setting \"%1\".").arg(key) +
                                             suggestNames(key, knownKeys()));
    }

    void readString(int member, QString& value)
    {
        const QString read = m_Tree.stringOf(member);
        if (read.isEmpty())
            refuse(member, QStringLiteral("expected a text that is not empty."));
        else
            value = read;
    }

    void readShortFolder(int member)
    {
        if (isSubFolder(m_Tree.stringOf(member)))
            m_Settings.shortFolder = m_Tree.stringOf(member);
        else
            refuse(member, QStringLiteral("expected the name of a folder below this one."));
    }

    std::optional<double> numberOf(int member) const
    {
        if (m_Tree.typeOf(member) != JsonTree::Type::Number)
            return std::nullopt;
        return m_Tree.valueBytes(member).toDouble();
    }

    void readShortLength(int member)
    {
        const auto number = numberOf(member);
        if (!number || *number < 1 || *number > 100'000 || std::floor(*number) != *number)
            refuse(member, QStringLiteral("expected a number of characters from 1."));
        else
            m_Settings.shortLength = static_cast<int>(*number);
    }

    void readFailUnder(int member)
    {
        const auto number = numberOf(member);
        if (!number || *number < 0 || *number > 100)
            refuse(member, QStringLiteral("expected a share from 0 to 100, in per cent."));
        else
            m_Settings.failUnder = number;
    }

    void readFailOn(int member)
    {
        if (!readClass(m_Tree.stringOf(member), m_Settings.failOn))
            refuse(member, QStringLiteral("expected \"error\", \"warning\" or \"info\"."));
    }

    void readIgnore(int member)
    {
        if (m_Tree.typeOf(member) != JsonTree::Type::Array) {
            refuse(member, QStringLiteral("expected a list of rules in square brackets."));
            return;
        }
        for (int element = m_Tree.firstChild(member); element != JsonTree::none;
             element = m_Tree.at(element).nextSibling) {
            const IgnoreRule rule(m_Tree.stringOf(element));
            if (!m_Tree.isString(element))
                refuse(element,
                       QStringLiteral("expected a rule such as \"same-as-base:Units/**\"."));
            else if (!rule.fault().isEmpty())
                add(m_Tree.valuePlace(element), rule.fault());
            else
                m_Settings.ignore.append(rule);
        }
    }

    void refuse(int node, const QString& expected)
    {
        const QString found = QString::fromUtf8(m_Tree.valueBytes(node)).simplified();
        add(m_Tree.valuePlace(node), QStringLiteral("found %1, %2").arg(found.left(40), expected));
    }

    void add(const Place& place, const QString& reason)
    {
        Finding finding;
        finding.id = QStringLiteral("bad-settings");
        finding.file = CheckSettings::fileName();
        finding.place = place;
        finding.reason = reason;
        m_Findings.append(finding);
    }

    const JsonTree& m_Tree;
    CheckSettings& m_Settings;
    QVector<Finding> m_Findings;
};

} // namespace

CheckSettings::CheckSettings()
    : base(LanguageDefinitions::getFirstFallbackLanguageFilename())
{
}

void CheckSettings::readFrom(const QString& folderPath)
{
    const QString path = folderPath + QLatin1Char('/') + fileName();
    if (isNothingAt(path))
        return;
    const FileContent content = readRegularFile(path);
    if (!content.bytes) {
        Finding finding;
        finding.id = QStringLiteral("bad-settings");
        finding.file = fileName();
        finding.reason =
            QStringLiteral("cannot be read: %1. See who may read it.").arg(content.error);
        faults.append(finding);
        return;
    }
    faults += SettingsReader(JsonTree(*content.bytes), *this).read();
}

bool CheckSettings::isIgnored(const Finding& finding) const
{
    return std::any_of(ignore.begin(), ignore.end(),
                       [&](const IgnoreRule& rule) { return rule.matches(finding); });
}

QString CheckSettings::fileName()
{
    return QStringLiteral(".textmanager-check.json");
}
