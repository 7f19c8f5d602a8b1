#include "PackVerification.h"

#include "TextKey.h"

#include "LanguageDefinitions.h"
#include "TextManagerBase.h"

#include <QSet>

namespace
{

/** Adds the URL of every text below a node, listed or not. */
void collectTexts(const QJsonObject& node, const QString& url, QSet<TextKey>& urls)
{
    if (node.contains(LanguageDefinitions::getJsonTextName()))
        urls.insert(url);
    const QJsonValue container = node.value(LanguageDefinitions::getJsonChildsKey());
    const QJsonObject members = container.isObject() ? container.toObject() : node;
    const QString prefix = url.isEmpty() ? QString() : url + QLatin1Char('/');
    for (auto member = members.begin(); member != members.end(); ++member) {
        if (member.value().isObject())
            collectTexts(member.value().toObject(), prefix + member.key(), urls);
    }
}

} // namespace

/** A text manager whose languages can be chosen. */
class PackVerification::Folder : public TextManagerBase
{
public:
    Folder(const QString& path, const QString& shortFolder, const QStringList& languages)
        : TextManagerBase(QString(), QString(), shortFolder) // which loads nothing yet
    {
        addLanguage(path + QLatin1Char('/'), m_LanguageMap);
        if (!shortFolder.isEmpty())
            addLanguage(path + QLatin1Char('/') + shortFolder, m_ShortLanguageMap);
        keep(languages, m_LanguageMap);
        keep(languages, m_ShortLanguageMap);
    }

    QStringList collectUrls() const
    {
        QSet<TextKey> urls;
        for (const auto* map : {&m_LanguageMap, &m_ShortLanguageMap}) {
            for (const QJsonObject& document : *map)
                collectTexts(document.value(LanguageDefinitions::getJsonContentName()).toObject(),
                             QString(), urls);
        }
        return QStringList(urls.cbegin(), urls.cend());
    }

private:
    static void keep(const QStringList& languages, QMap<QString, QJsonObject>& map)
    {
        const QStringList keys = map.keys();
        for (const QString& key : keys) {
            if (!languages.isEmpty() && !languages.contains(key))
                map.remove(key);
        }
    }
};

PackVerification::PackVerification(const PackRequest& request, const QStringList& languages,
                                   const QString& packedPath)
    : m_Request(request)
    , m_Whole(std::make_unique<Folder>(request.folderPath, request.shortFolder, QStringList()))
    , m_Expected(std::make_unique<Folder>(request.folderPath, request.shortFolder, languages))
    , m_Packed(std::make_unique<Folder>(packedPath, request.shortFolder, QStringList()))
    , m_Urls(m_Expected->collectUrls())
{
}

PackVerification::~PackVerification() = default;

QString PackVerification::findDifference(const QString& language) const
{
    const QString inLists = compareLists(language);
    if (!inLists.isEmpty())
        return inLists;
    const auto differs = [&](const QString& url) {
        const auto lookUp = [&](const Folder& folder) {
            bool hasText = false;
            bool hasShortText = false;
            bool hasComment = false;
            const QString text = folder.getText(url, hasText, language, true);
            const QString shortText = folder.getShortText(url, hasShortText, language);
            const QString comment = m_Request.comments == PackedComments::Kept
                                        ? folder.getComment(url, language, hasComment)
                                        : QString();
            return std::make_tuple(text, hasText, shortText, hasShortText, comment, hasComment);
        };
        return lookUp(*m_Expected) != lookUp(*m_Packed);
    };
    for (const QString& url : m_Urls) {
        if (differs(url))
            return QStringLiteral("the packed folder answers otherwise for %1 in %2.")
                .arg(url, language);
    }
    return QString();
}

QString PackVerification::compareLists(const QString& language) const
{
    if (m_Expected->getAvailableLanguages() != m_Packed->getAvailableLanguages())
        return QStringLiteral("the packed folder has other languages.");
    if (m_Expected->getLanguageHeaderInfo(language) != m_Packed->getLanguageHeaderInfo(language))
        return QStringLiteral("the packed folder has another header in %1.").arg(language);
    if (m_Request.comments != PackedComments::Dropped &&
        m_Expected->getAvailableUrls(language) != m_Packed->getAvailableUrls(language))
        return QStringLiteral("the packed folder lists other URLs in %1.").arg(language);
    return QString();
}

int PackVerification::countLostTexts(const QString& language) const
{
    int count = 0;
    for (const QString& url : m_Whole->collectUrls()) {
        bool isThere = false;
        const QString text = m_Whole->getText(url, isThere, language, true);
        count += text != m_Expected->getText(url, isThere, language, true) ? 1 : 0;
    }
    return count;
}
