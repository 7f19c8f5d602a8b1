#include "KeyTree.h"

#include "TextKey.h"

#include "LanguageDefinitions.h"

#include <QHash>
#include <QStringList>

namespace
{

bool isAsciiLetter(QChar character)
{
    const char16_t lower = character.unicode() | 0x20;
    return lower >= u'a' && lower <= u'z';
}

bool isAsciiDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

/** What reads best. */
QString readableName(const QString& key)
{
    const QLatin1Char underscore('_');
    QString name;
    for (const QChar character : key) {
        if (isAsciiLetter(character) || isAsciiDigit(character))
            name += character;
        else if (!name.endsWith(underscore) && !name.isEmpty())
            name += underscore;
    }
    if (name.isEmpty() || isAsciiDigit(name.front()))
        name.prepend(underscore);
    return name;
}

/** What no other key has, nor any readable name: the first character and all others that are no
 * letter or digit are spelled out. */
QString distinctName(const QString& key)
{
    QString name;
    for (const QChar character : key) {
        if (!name.isEmpty() && (isAsciiLetter(character) || isAsciiDigit(character)))
            name += character;
        else
            name += QStringLiteral("_u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
    }
    return name.isEmpty() ? QStringLiteral("_u") : name;
}

void nameChildren(KeyTree::Node& node, const KeyTree::FinishName& finishName)
{
    QHash<TextKey, int> uses;
    for (auto child = node.children.begin(); child != node.children.end(); ++child) {
        child->name = finishName(readableName(child.key()));
        ++uses[child->name];
        nameChildren(*child, finishName);
    }
    for (auto child = node.children.begin(); child != node.children.end(); ++child) {
        if (uses.value(child->name) > 1)
            child->name = distinctName(child.key());
    }
}

} // namespace

KeyTree::KeyTree(const QVector<KeyText>& texts, const FinishName& finishName)
{
    for (const KeyText& text : texts) {
        Node* node = &m_Root;
        for (const QString& key : text.url.split(LanguageDefinitions::getUrlSeparator()))
            node = &node->children[key];
        node->url = text.url;
        node->text = text.text;
        node->comment = text.comment;
    }
    nameChildren(m_Root, finishName);
}
