// A URL, and the bytes of a language file: loaded, listed and looked up.

#include "FuzzSupport.h"
#include "PlainWalk.h"

#include "TextManagerBase.h"

namespace
{

/** Asks for the text and the comment twice: the second answer may be remembered. */
void compareLookUps(const TextManagerBase& manager, const QString& url, const QJsonObject& document)
{
    const QJsonValue text = PlainWalk::readMember(url, "text", document);
    const QJsonValue comment = PlainWalk::readMember(url, "comment", document);
    const bool isThere = !text.isUndefined();
    const bool hasText = !text.toString().isEmpty();
    for (int i = 0; i < 2; ++i) {
        bool ok = false;
        require(manager.getText(url, ok, "xx", false) == text.toString(), "the text");
        require(ok == isThere, "whether the last language has the text");
        require(manager.getText(url, ok, "POSIX", true) == text.toString(), "the text, not chosen");
        require(ok == hasText, "whether the language tried last has the text");
        require(manager.getShortText(url, ok, "POSIX") == text.toString(), "the short text");
        require(ok == isThere, "whether there is a short text");
        require(manager.getComment(url, "xx", ok) == comment.toString(), "the comment");
        require(manager.getAnsweringLanguage(url, "xx") == (hasText ? "POSIX" : ""),
                "the language");
    }
}

void compareHeader(const TextManagerBase& manager, const QJsonObject& document)
{
    const QJsonObject header = document.value("Header").toObject();
    const QString language = header.value("language").toString();
    const QString subLanguage = header.value("subLanguage").toString();
    require(manager.getLanguageHeaderInfo("POSIX") == qMakePair(language, subLanguage), "a header");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const FuzzFolder folder;
    FuzzInput input(data, size);
    const QString url = input.takeText();
    folder.write("POSIX.json", input.rest());
    TextManagerBase manager(folder.path(), "xx", "."); // its short texts are the same file

    const QJsonObject document = PlainWalk::parse(input.rest()).toObject();
    const bool isLanguageFile = document.contains("Content");
    require(manager.getAvailableLanguages().contains("POSIX") == isLanguageFile, "a language");
    if (!isLanguageFile)
        return 0;
    const QStringList urls = PlainWalk::urls(document.value("Content"));
    require(manager.getAvailableUrls("POSIX") == urls, "the URLs");
    compareHeader(manager, document);
    compareLookUps(manager, url, document);
    for (const QString& listed : urls.mid(0, 100))
        compareLookUps(manager, listed, document);
    manager.reloadLanguage();
    compareLookUps(manager, url, document);
    return 0;
}
