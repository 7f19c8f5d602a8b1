// What a write costs, and that it does not depend on how much the document holds beside it: the
// time for one text among 10,000 siblings against that for one among 100, and many writes in a row.

#include "LanguageInformation.h"
#include "TextManagerConverter.h"

#include <QJsonObject>
#include <QStringList>

#include <benchmark/benchmark.h>

namespace
{

QString nodeKey(int number)
{
    return QStringLiteral("Node%1").arg(number, 5, 10, QLatin1Char('0'));
}

/** Storage path of a node's text. */
QString textPath(int number)
{
    return QStringLiteral("Content/Menu/childs/%1/text").arg(nodeKey(number));
}

QStringList textPaths(int count)
{
    QStringList paths;
    for (int number = 0; number < count; ++number)
        paths.append(textPath(number));
    return paths;
}

/** A document whose node Menu has @p count children. */
QJsonObject documentWithSiblings(int count)
{
    QJsonObject siblings;
    for (int number = 0; number < count; ++number)
        siblings.insert(nodeKey(number), QJsonObject{{QStringLiteral("text"), nodeKey(number)},
                                                     {QStringLiteral("comment"), QString()}});
    const QJsonObject menu{{QStringLiteral("childs"), siblings}};
    return {{QStringLiteral("Content"), QJsonObject{{QStringLiteral("Menu"), menu}}}};
}

/** What to compare with: each level is copied out while its parent still holds it, so that it is
 * cloned. */
void writeThroughCopies(const QStringList& path, int level, const QString& text,
                        QJsonObject& object)
{
    if (level == path.size() - 1) {
        object.insert(path.at(level), text);
        return;
    }
    QJsonObject child = object.value(path.at(level)).toObject();
    writeThroughCopies(path, level + 1, text, child);
    object.insert(path.at(level), child);
}

void writesOneText(benchmark::State& state)
{
    const int siblings = static_cast<int>(state.range(0));
    QJsonObject document = documentWithSiblings(siblings);
    const QString path = textPath(siblings / 2);
    const QString texts[] = {QStringLiteral("Save"), QStringLiteral("Store")};
    LanguageInformation information;
    int turn = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(information.setJsonValue(path, texts[++turn % 2], document));
}
BENCHMARK(writesOneText)->Arg(100)->Arg(1000)->Arg(10000);

void writesOneTextThroughCopies(benchmark::State& state)
{
    const int siblings = static_cast<int>(state.range(0));
    QJsonObject document = documentWithSiblings(siblings);
    const QStringList path = textPath(siblings / 2).split(QLatin1Char('/'));
    for (auto _ : state)
        writeThroughCopies(path, 0, QStringLiteral("Save"), document);
}
BENCHMARK(writesOneTextThroughCopies)->Arg(100)->Arg(1000)->Arg(10000);

void writesEveryText(benchmark::State& state)
{
    const int siblings = static_cast<int>(state.range(0));
    QJsonObject document = documentWithSiblings(siblings);
    const QStringList paths = textPaths(siblings);
    LanguageInformation information;
    for (auto _ : state)
        for (const QString& path : paths)
            benchmark::DoNotOptimize(information.setJsonValue(path, path, document));
    state.SetItemsProcessed(state.iterations() * siblings);
    state.SetComplexityN(siblings);
}
BENCHMARK(writesEveryText)->RangeMultiplier(10)->Range(100, 100000)->Complexity();

/** From an empty document on, in the order of the keys or against it. */
void createsEveryNode(benchmark::State& state)
{
    const int siblings = static_cast<int>(state.range(0));
    const bool isAscending = state.range(1) != 0;
    const QStringList paths = textPaths(siblings);
    LanguageInformation information;
    for (auto _ : state) {
        QJsonObject document;
        for (int turn = 0; turn < siblings; ++turn)
            information.setJsonValue(paths.at(isAscending ? turn : siblings - 1 - turn),
                                     QStringLiteral("new"), document);
    }
    state.SetItemsProcessed(state.iterations() * siblings);
}
BENCHMARK(createsEveryNode)
    ->ArgNames({"siblings", "ascending"})
    ->ArgsProduct({{100, 1000, 10000}, {1, 0}})
    ->Unit(benchmark::kMicrosecond);

void editsThroughTheConverter(benchmark::State& state)
{
    const int siblings = static_cast<int>(state.range(0));
    QJsonObject document = documentWithSiblings(siblings);
    TextManagerConverter converter(QStringLiteral("en_US"), document);
    const QString url = QStringLiteral("Menu/") + nodeKey(siblings / 2);
    QString comment = QStringLiteral("Button");
    for (auto _ : state) {
        converter.setText(url, QStringLiteral("Save"));
        converter.setComment(url, comment);
    }
}
BENCHMARK(editsThroughTheConverter)->Arg(100)->Arg(10000);

} // namespace

BENCHMARK_MAIN();
