#include "GeneratedKeys.h"

#include "ReservedWords.h"
#include "TextKey.h"

#include <QStringList>

#include <algorithm>

namespace
{

/** The name of a text that has others below it. */
const QString selfName = QStringLiteral("self");

/** How one language writes what is generated. */
struct Dialect {
    KeyTree::FinishName finishName;
    QString (*escape)(QChar character); ///< within a literal
    QString groupBegin;                 ///< %1: name
    QString groupEnd;                   ///< %1: name
    QString constant;                   ///< %1: name, %2: URL within a literal
};

QString nameInCpp(const QString& name)
{
    const bool isTaken =
        isReservedInCpp(name) || name == selfName || name == QLatin1String("TextKey");
    return isTaken ? name + QLatin1Char('_') : name;
}

QString nameInQml(const QString& name)
{
    const QString property = name.left(1).toLower() + name.mid(1); // clazy:exclude=qstring-left
    const bool isTaken = isReservedInQml(property) || property == selfName;
    return isTaken ? property + QLatin1Char('_') : property;
}

QString hexadecimal(QChar character)
{
    return QStringLiteral("%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
}

QString escapeInCpp(QChar character)
{
    // The literal is closed and opened again, since a following digit would count to the number.
    return QStringLiteral("\\x%1\" u\"").arg(hexadecimal(character));
}

QString escapeInQml(QChar character)
{
    return QStringLiteral("\\u") + hexadecimal(character);
}

const Dialect& cpp()
{
    static const Dialect dialect = {
        nameInCpp, escapeInCpp, QStringLiteral("namespace %1 {"),
        QStringLiteral("} // namespace %1"),
        QStringLiteral("inline constexpr TextKey %1{[] { return QStringLiteral(\"%2\"); }};")};
    return dialect;
}

const Dialect& qml()
{
    static const Dialect dialect = {
        nameInQml, escapeInQml, QStringLiteral("readonly property QtObject %1: QtObject {"),
        QStringLiteral("}"), QStringLiteral("readonly property string %1: \"%2\"")};
    return dialect;
}

/** A text in one line of a comment, which it cannot end. */
QString inComment(const QString& text)
{
    return text.simplified().replace(QStringLiteral("*/"), QStringLiteral("* /"));
}

class Writer
{
public:
    explicit Writer(const Dialect& dialect)
        : m_Dialect(dialect)
    {
    }

    void writeLine(const QString& line, int level = 0)
    {
        m_StrText += QString(4 * level, QLatin1Char(' ')) + line + QLatin1Char('\n');
    }

    void writeKeys(const QVector<KeyText>& texts, int level)
    {
        writeChildren(KeyTree(texts, m_Dialect.finishName).root(), level);
    }

    QByteArray bytes() const { return m_StrText.toUtf8(); }

private:
    void writeChildren(const KeyTree::Node& node, int level)
    {
        for (const KeyTree::Node& child : node.children) {
            if (child.children.isEmpty()) {
                writeConstant(child, child.name, level);
                continue;
            }
            writeLine(m_Dialect.groupBegin.arg(child.name), level);
            if (!child.url.isEmpty())
                writeConstant(child, selfName, level + 1);
            writeChildren(child, level + 1);
            const QString end = m_Dialect.groupEnd;
            writeLine(end.contains(QLatin1String("%1")) ? end.arg(child.name) : end, level);
        }
    }

    void writeConstant(const KeyTree::Node& node, const QString& name, int level)
    {
        const QString comment =
            node.comment.isEmpty() ? QString() : QStringLiteral(" - ") + inComment(node.comment);
        writeLine(QStringLiteral("/** \"%1\"%2 */").arg(inComment(node.text), comment), level);
        writeLine(m_Dialect.constant.arg(name, literalOf(node.url)), level);
    }

    QString literalOf(const QString& text) const
    {
        QString literal;
        for (const QChar character : text) {
            const bool isQuoted = character == QLatin1Char('"') || character == QLatin1Char('\\');
            const bool isPlain = character.unicode() >= 0x20 && character.unicode() < 0x7f;
            literal += isQuoted  ? QLatin1Char('\\') + QString(character)
                       : isPlain ? QString(character)
                                 : m_Dialect.escape(character);
        }
        return literal;
    }

    const Dialect& m_Dialect;
    QString m_StrText;
};

void collectNames(const KeyTree::Node& node, const QString& prefix, const QString& separator,
                  QHash<TextKey, QString>& names)
{
    for (const KeyTree::Node& child : node.children) {
        const QString name = prefix + child.name;
        const QString below = name + separator;
        if (!child.url.isEmpty())
            names.insert(child.children.isEmpty() ? name : below + selfName, child.url);
        collectNames(child, below, separator, names);
    }
}

QString origin()
{
    return QStringLiteral(
        "// Made by 'textmanager keys' from language files. Change those, not this.");
}

} // namespace

QByteArray generateKeyHeader(const QVector<KeyText>& texts, const QString& namespaceName)
{
    Writer writer(cpp());
    writer.writeLine(origin());
    writer.writeLine(QStringLiteral("#pragma once\n\n#include <QString>\n"));
    writer.writeLine(cpp().groupBegin.arg(namespaceName));
    writer.writeLine(QStringLiteral(
        "\n/** A text URL: a QString wherever one is wanted, made without an allocation. */\n"
        "template<typename Literal>\n"
        "struct TextKey {\n"
        "    Literal literal;\n"
        "    operator QString() const { return literal(); }\n"
        "};\n"
        "template<typename Literal>\n"
        "TextKey(Literal) -> TextKey<Literal>;\n"));
    writer.writeKeys(texts, 0);
    writer.writeLine(QStringLiteral("\n") + cpp().groupEnd.arg(namespaceName));
    return writer.bytes();
}

QByteArray generateKeySingleton(const QVector<KeyText>& texts)
{
    Writer writer(qml());
    writer.writeLine(origin());
    writer.writeLine(QStringLiteral("pragma Singleton\n\nimport QtQml 2.15\n\nQtObject {"));
    writer.writeKeys(texts, 1);
    writer.writeLine(qml().groupEnd);
    return writer.bytes();
}

QHash<TextKey, QString> keyHeaderNames(const QVector<KeyText>& texts)
{
    QHash<TextKey, QString> names;
    collectNames(KeyTree(texts, nameInCpp).root(), QString(), QStringLiteral("::"), names);
    return names;
}

QHash<TextKey, QString> keySingletonNames(const QVector<KeyText>& texts)
{
    QHash<TextKey, QString> names;
    collectNames(KeyTree(texts, nameInQml).root(), QString(), QStringLiteral("."), names);
    return names;
}

bool isNamespaceName(const QString& name)
{
    const auto isNamePart = [](const QString& part) {
        const auto isWordCharacter = [](QChar character) {
            return character == QLatin1Char('_') ||
                   (character.unicode() < 0x80 && character.isLetterOrNumber());
        };
        return !part.isEmpty() && std::all_of(part.begin(), part.end(), isWordCharacter) &&
               part.front() != QLatin1Char('_') && !part.front().isDigit() &&
               !isReservedInCpp(part);
    };
    const QStringList parts = name.split(QStringLiteral("::"));
    return std::all_of(parts.begin(), parts.end(), isNamePart);
}
