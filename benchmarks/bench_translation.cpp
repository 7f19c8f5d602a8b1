// What translating a document costs, against its look-ups and writes alone: 100,000 objects of
// the system information's registry, each with a text id for which a text and a short text are
// written.

#include "JsonDataIteratorTextIdTranslator.h"
#include "TextManagerBase.h"
#include "TextManagerReferenceParameters.h"

#include "JsonDataIterator.h"
#include "SystemInformationManagerRegistryDefinitions.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>
#include <QVector>

#include <benchmark/benchmark.h>

namespace
{

using Keys = SystemInformationManagerRegistryDefinitions;

constexpr int objectCount = 100'000;

const TextManagerBase& textManager()
{
    static const TextManagerBase manager(QStringLiteral(EXAMPLE_LANGUAGES), QStringLiteral("de_DE"),
                                         QStringLiteral("short"));
    return manager;
}

const QString& language()
{
    static const QString key = QStringLiteral("de_DE");
    return key;
}

QString textId(int number)
{
    static const QStringList urls = textManager().getAvailableUrls(language());
    return urls.at(number % urls.size());
}

/** Shares nothing with another one, or the first write to it would copy it. */
QJsonObject labelObject(int number)
{
    return {{QStringLiteral("name"), QStringLiteral("entry-%1").arg(number)},
            {QStringLiteral("priority"), number},
            {Keys::getKeyLabelTextId(), textId(number)}};
}

/** Builds what @p translate is given anew for each measurement. */
template<typename Build, typename Translate>
void measure(benchmark::State& state, Build build, Translate translate)
{
    for ([[maybe_unused]] const auto iteration : state) {
        state.PauseTiming();
        auto data = build();
        state.ResumeTiming();
        translate(data);
        state.PauseTiming();
        data = {}; // what it takes to free them is no part of the translation
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * objectCount);
}

QVector<QJsonObject> buildObjects()
{
    QVector<QJsonObject> objects;
    for (int number = 0; number < objectCount; ++number)
        objects.append(labelObject(number));
    return objects;
}

QJsonValue buildDocument()
{
    QJsonArray objects;
    for (int number = 0; number < objectCount; ++number)
        objects.append(labelObject(number));
    return objects;
}

void bareLookUps(benchmark::State& state)
{
    measure(state, buildObjects, [](QVector<QJsonObject>& objects) {
        for (int number = 0; number < objects.size(); ++number) {
            benchmark::DoNotOptimize(textManager().getText(textId(number), language()));
            benchmark::DoNotOptimize(textManager().getShortText(textId(number), language()));
        }
    });
}

void bareLookUpsAndInserts(benchmark::State& state)
{
    measure(state, buildObjects, [](QVector<QJsonObject>& objects) {
        for (int number = 0; number < objects.size(); ++number) {
            const QString text = textManager().getText(textId(number), language());
            const QString shortText = textManager().getShortText(textId(number), language());
            objects[number].insert(Keys::getKeyLabel(), text);
            objects[number].insert(Keys::getKeyLabelShort(), shortText);
        }
    });
}

void translatesObjects(benchmark::State& state)
{
    const TextManagerReferenceParameters parameters(textManager(), language());
    JsonDataIteratorTextIdTranslator translator(parameters);
    translator.setConfiguration(JsonDataIteratorTextIdTranslator::SystemInformationRegistry);
    measure(state, buildObjects, [&](QVector<QJsonObject>& objects) {
        QJsonValue value;
        for (QJsonObject& object : objects)
            translator.compute(object, value);
    });
}

void translatesDocument(benchmark::State& state)
{
    const TextManagerReferenceParameters parameters(textManager(), language());
    JsonDataIteratorTextIdTranslator translator(parameters);
    translator.setConfiguration(JsonDataIteratorTextIdTranslator::SystemInformationRegistry);
    measure(state, buildDocument,
            [&](QJsonValue& document) { JsonDataIterator::iterate(document, translator); });
}

BENCHMARK(bareLookUps)->Unit(benchmark::kMillisecond);
BENCHMARK(bareLookUpsAndInserts)->Unit(benchmark::kMillisecond);
BENCHMARK(translatesObjects)->Unit(benchmark::kMillisecond);
BENCHMARK(translatesDocument)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
