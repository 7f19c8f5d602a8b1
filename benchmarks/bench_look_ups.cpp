// The look-ups of the library, and beside them those of what a user might pick in its place.

#include "BenchmarkProgram.h"
#include "Peers.h"

#include <LanguageDefinitions.h>
#include <LanguageInformation.h>
#include <TextManagerBase.h>

#include <benchmark/benchmark.h>

#include <QDebug>
#include <QJsonObject>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <numeric>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace
{

/** What is looked up, in random order: no text stands near the one before it. */
template<typename Key>
using Keys = std::vector<Key>;

/** A copy with characters of its own, so that no key is known by its address. */
template<typename Key>
Key copyOf(const Key& key)
{
    return Key(key.constData(), key.size());
}

/** The same order for the same number of keys. They lie in memory in another one, all alike. */
template<typename Key>
Keys<Key> shuffled(Keys<Key> keys)
{
    std::shuffle(keys.begin(), keys.end(), std::mt19937());
    return keys;
}

Keys<QString> toKeys(const QVector<QString>& urls)
{
    Keys<QString> keys;
    for (const QString& url : urls)
        keys.push_back(copyOf(url));
    return shuffled(keys);
}

Keys<QByteArray> toIds(const QVector<QString>& urls)
{
    Keys<QByteArray> ids;
    for (const QString& url : urls)
        ids.push_back(url.toUtf8());
    return shuffled(ids);
}

/** URLs that no language has: each one misspelt, in so many ways. */
Keys<QString> misspelt(const QVector<QString>& urls, int ways)
{
    Keys<QString> keys;
    for (int way = 0; way < ways; ++way) {
        for (const QString& url : urls)
            keys.push_back(url + QString::number(way));
    }
    return shuffled(keys);
}

template<typename Answer>
Keys<QString> answersOf(const Keys<QString>& urls, Answer answer)
{
    Keys<QString> answers;
    for (const QString& url : urls)
        answers.push_back(answer(url));
    return answers;
}

/** A look-up that remembers nothing: through one document after the other. */
class PlainWalk
{
public:
    PlainWalk(const TextFolder& folder, const QVector<QString>& languages)
    {
        TextManagerBase reader{folder.languages(), QString(), TextFolder::shortFolder()};
        for (const QString& key : languages) {
            QJsonObject document;
            reader.loadAndParseFromJson(reader.getLanguageFileNameFromLanguageName(key), document);
            m_Documents.append(document);
        }
    }

    QString text(const QString& url) const
    {
        QString result;
        for (auto document = m_Documents.cbegin();
             result.isEmpty() && document != m_Documents.cend(); ++document) {
            bool ok = false;
            result = LanguageInformation().getObject(url, ok, *document,
                                                     LanguageDefinitions::getJsonContentName(),
                                                     LanguageDefinitions::getJsonTextName());
        }
        return result;
    }

private:
    QVector<QJsonObject> m_Documents;
};

HashPeer::Languages toHashes(const TextFolder& folder)
{
    HashPeer::Languages languages;
    for (const QString& language : TextFolder::languageKeys()) {
        const PlainWalk walk(folder, {language});
        QHash<QString, QString>& texts = languages[copyOf(language)];
        for (const QString& url : folder.urls())
            texts.insert(copyOf(url), walk.text(url));
    }
    return languages;
}

/** All that is measured, and the keys to measure it with. */
struct LookUps {
    explicit LookUps(const TextFolder& textFolder)
        : folder(textFolder)
        , urls(toKeys(folder.urls()))
        , urlsShownInFull(toKeys(folder.urlsShownInFull()))
        , missingUrls(misspelt(folder.urls(), 1))
        , manyMissingUrls(misspelt(folder.urls(), 10))
        , ids(toIds(folder.urls()))
        , walk(folder, TextFolder::languageKeys())
        // The language is no literal: a device reads it from its settings.
        , texts(folder.languages(), copyOf(TextFolder::language()), TextFolder::shortFolder())
        , crowdedTexts(folder.languages(), copyOf(TextFolder::language()),
                       TextFolder::shortFolder())
        , incompleteTexts(folder.incompleteLanguages(), copyOf(TextFolder::language()),
                          TextFolder::shortFolder())
        , translator(folder)
        , gettext(folder)
        , icu(folder)
        , hashes(toHashes(folder))
    {
        for (const QString& language : TextFolder::languageKeys())
            walks.append(PlainWalk(folder, {language}));
    }

    const TextFolder folder;
    const Keys<QString> urls;
    const Keys<QString> urlsShownInFull;
    const Keys<QString> missingUrls;
    const Keys<QString> manyMissingUrls; ///< too many to remember that they are missing
    const Keys<QByteArray> ids;

    const PlainWalk walk;
    QVector<PlainWalk> walks; ///< one in each language alone

    mutable TextManagerBase texts;      ///< reloaded meanwhile, of files that do not change
    const TextManagerBase crowdedTexts; ///< for more missing texts than are remembered
    const TextManagerBase incompleteTexts;
    const TranslatorPeer translator;
    const GettextPeer gettext;
    const IcuPeer icu;
    const HashPeer hashes;
};

/** Whether @p answer answers every key as expected; what it remembers is remembered afterwards. */
template<typename Key, typename Answer>
bool isRight(const char* name, const Keys<Key>& keys, const Keys<QString>& expected, Answer answer)
{
    // What is remembered of the answers is not to lie in memory in the order of the later look-ups.
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::minstd_rand());
    for (const std::size_t i : order) {
        const QString text = answer(copyOf(keys[i]));
        if (text != expected[i]) {
            qCritical() << name << "answers" << text << "to" << keys[i] << "and not" << expected[i];
            return false;
        }
    }
    return true;
}

/** One key after the other, and then from the first again. */
template<typename Key>
class Round
{
public:
    explicit Round(const Keys<Key>& keys, std::size_t first = 0)
        : m_Keys(keys)
        , m_Next(first)
    {
    }
    const Key& next()
    {
        const Key& key = m_Keys[m_Next];
        if (++m_Next == m_Keys.size())
            m_Next = 0;
        return key;
    }

private:
    const Keys<Key>& m_Keys;
    std::size_t m_Next;
};

/** Looks the keys up, one after the other, once the answers were seen to be those expected. */
template<typename Key, typename Answer>
bool add(const char* name, const Keys<Key>& keys, const Keys<QString>& expected, Answer answer)
{
    if (!isRight(name, keys, expected, answer))
        return false;
    benchmark::RegisterBenchmark(name, [&keys, answer](benchmark::State& state) {
        Round round(keys);
        for (auto _ : state)
            benchmark::DoNotOptimize(answer(round.next()));
        state.SetItemsProcessed(state.iterations());
    });
    return true;
}

/** Looks the keys up until it is over, and uses each answer. @return how many. */
template<typename Answer, typename Use>
int64_t lookUpUntil(const std::atomic<bool>& isOver, const Keys<QString>& keys, std::size_t first,
                    Answer answer, Use use)
{
    constexpr int lookUpsAtATime = 100;
    Round round(keys, first);
    int64_t count = 0;
    for (; !isOver; count += lookUpsAtATime) {
        for (int i = 0; i < lookUpsAtATime; ++i)
            use(answer(round.next()));
    }
    return count;
}

void ignore(const QString& text)
{
    benchmark::DoNotOptimize(text);
}

/** What a translator of JSON data does with a text: half a microsecond of work. */
void writeIntoObject(const QString& text)
{
    QJsonObject object;
    object.insert(QStringLiteral("label"), text);
    benchmark::DoNotOptimize(object);
}

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/** Threads that look up all the time, as long as this lives. */
class BusyThreads
{
public:
    template<typename Answer, typename Use>
    BusyThreads(std::size_t count, const Keys<QString>& keys, Answer answer, Use use)
    {
        for (std::size_t i = 0; i < count; ++i)
            m_Counts.push_back(std::async(std::launch::async, lookUpUntil<Answer, Use>,
                                          std::cref(m_IsOver), std::cref(keys),
                                          i * keys.size() / count, answer, use));
    }
    ~BusyThreads() { m_IsOver = true; }
    BusyThreads(const BusyThreads&) = delete;
    BusyThreads& operator=(const BusyThreads&) = delete;

    /** Ends them. @return how many texts they looked up. */
    int64_t end()
    {
        m_IsOver = true;
        return std::accumulate(m_Counts.begin(), m_Counts.end(), int64_t(0),
                               [](int64_t sum, auto& count) { return sum + count.get(); });
    }

private:
    std::atomic<bool> m_IsOver = false;
    std::vector<std::future<int64_t>> m_Counts; ///< each waits for its thread when it goes
};

/** Several threads that translate at once, for a while; all that they look up in it is counted. */
template<typename Answer>
void addTranslation(const char* name, const Keys<QString>& keys, Answer answer)
{
    const auto lookUp = [&keys, answer](benchmark::State& state) {
        int64_t count = 0;
        for (auto _ : state) {
            const auto start = Clock::now();
            BusyThreads threads(static_cast<std::size_t>(state.range()), keys, answer,
                                writeIntoObject);
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            count += threads.end();
            state.SetIterationTime(secondsSince(start));
        }
        state.SetItemsProcessed(count);
    };
    benchmark::RegisterBenchmark(name, lookUp)->Arg(1)->Arg(2)->Arg(4)->UseManualTime();
}

/** Something that is done now and then, beside threads that look up all the time. */
template<typename Answer, typename Act>
void addBeside(const char* name, std::size_t threadCount, const Keys<QString>& keys, Answer answer,
               Act act)
{
    const auto measure = [&keys, threadCount, answer, act](benchmark::State& state) mutable {
        const BusyThreads threads(threadCount, keys, answer, ignore);
        for (auto _ : state) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
            const auto start = Clock::now();
            act();
            state.SetIterationTime(secondsSince(start));
        }
    };
    benchmark::RegisterBenchmark(name, measure)->Iterations(100)->UseManualTime();
}

/** What a text manager, or a peer, is asked for in several threads. */
template<typename Answer, typename Reload>
void addThreads(const std::string& name, const Keys<QString>& keys, Answer answer, Reload reload)
{
    addTranslation((name + "/translating").c_str(), keys, answer);
    const auto showScreen = [round = Round(keys), answer]() mutable {
        constexpr int textsOfAScreen = 200;
        for (int i = 0; i < textsOfAScreen; ++i)
            benchmark::DoNotOptimize(answer(round.next()));
    };
    addBeside((name + "/screen").c_str(), 1, keys, answer, showScreen);
    addBeside((name + "/reload").c_str(), 2, keys, answer, reload);
}

bool addLibrary(const LookUps& lookUps)
{
    const TextManagerBase& texts = lookUps.texts;
    const auto direct = answersOf(lookUps.urls, [&](auto url) { return lookUps.walk.text(url); });
    const auto inFull =
        answersOf(lookUps.urlsShownInFull, [&](auto url) { return lookUps.walk.text(url); });
    const auto english =
        answersOf(lookUps.urlsShownInFull, [&](auto url) { return lookUps.walks[1].text(url); });
    const Keys<QString> nothing(lookUps.manyMissingUrls.size());

    const auto getText = [&](const QString& url) { return texts.getText(url, QString()); };
    const auto getCrowdedText = [&](const QString& url) {
        return lookUps.crowdedTexts.getText(url, QString());
    };
    const auto getFallbackText = [&](const QString& url) {
        return lookUps.incompleteTexts.getText(url, QString());
    };
    const auto getShortText = [&](const QString& url) {
        return texts.getShortText(url, QString());
    };
    const auto walk = [&](const QString& url) { return lookUps.walk.text(url); };
    addThreads("getText", lookUps.urls, getText, [&] { lookUps.texts.reloadLanguage(); });
    return add("getText", lookUps.urls, direct, getText) &&
           add("getText/fallback", lookUps.urlsShownInFull, english, getFallbackText) &&
           add("getText/missing", lookUps.missingUrls, nothing, getText) &&
           add("getText/many_missing", lookUps.manyMissingUrls, nothing, getCrowdedText) &&
           add("getShortText/full", lookUps.urlsShownInFull, inFull, getShortText) &&
           add("walk", lookUps.urls, direct, walk) &&
           add("walk/missing", lookUps.missingUrls, nothing, walk) &&
           add("walk/many_missing", lookUps.manyMissingUrls, nothing, walk);
}

/** The first look-up of each text. */
void lookUpFirst(benchmark::State& state, const TextFolder& folder, const Keys<QString>& urls)
{
    std::optional<TextManagerBase> texts;
    for (auto _ : state) {
        state.PauseTiming();
        texts.emplace(folder.languages(), TextFolder::language(), TextFolder::shortFolder());
        state.ResumeTiming();
        for (const QString& url : urls)
            benchmark::DoNotOptimize(texts->getText(url, QString()));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(urls.size()));
}

bool addPeers(const LookUps& lookUps)
{
    const auto expected = answersOf(lookUps.urls, [&](auto url) { return lookUps.walk.text(url); });
    const auto translate = [&](const QByteArray& id) { return lookUps.translator.text(id); };
    const auto dgettext = [&](const QByteArray& id) { return lookUps.gettext.text(id); };
    const auto icu = [&](const QByteArray& id) { return lookUps.icu.text(id); };
    const auto hash = [&lookUps, language = copyOf(TextFolder::language())](const QString& url) {
        return lookUps.hashes.text(url, language);
    };
    addThreads("QHash", lookUps.urls, hash, [&] { lookUps.hashes.lookForChanges(lookUps.folder); });
    return add("QTranslator", lookUps.ids, expected, translate) &&
           add("dgettext", lookUps.ids, expected, dgettext) &&
           add("ICU", lookUps.ids, expected, icu) && add("QHash", lookUps.urls, expected, hash);
}

/** Every text in one of the languages, so that the language changes from look-up to look-up. */
bool addLanguages(const LookUps& lookUps)
{
    const auto keys = TextFolder::languageKeys();
    const auto languageOf = [count = keys.size()](const QString& url) {
        return url.size() % count;
    };
    const auto walk = [&, languageOf](const QString& url) {
        return lookUps.walks[languageOf(url)].text(url);
    };
    const auto getText = [&lookUps, keys, languageOf](const QString& url) {
        return lookUps.texts.getText(url, keys[languageOf(url)]);
    };
    const auto hash = [&lookUps, keys, languageOf](const QString& url) {
        return lookUps.hashes.text(url, keys[languageOf(url)]);
    };
    const auto expected = answersOf(lookUps.urls, walk);
    return add("getText/languages", lookUps.urls, expected, getText) &&
           add("QHash/languages", lookUps.urls, expected, hash);
}

bool addAll(const TextFolder& folder)
{
    // Lives until the end of the program: the benchmarks run after this.
    static const LookUps lookUps(folder);
    benchmark::RegisterBenchmark("getText/first", lookUpFirst, folder, lookUps.urls);
    return addLibrary(lookUps) && addPeers(lookUps) && addLanguages(lookUps);
}

} // namespace

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv, addAll);
}
