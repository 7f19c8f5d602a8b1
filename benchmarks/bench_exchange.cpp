// Texts on their way to a translator and back: what an export and an import of a language cost,
// against loading that language.

#include "BenchmarkProgram.h"

#include "ExchangeFolder.h"
#include "ExchangeFormat.h"
#include "LanguageImport.h"

#include <LanguageDefinitions.h>
#include <TextManagerBase.h>

#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>

#include <memory>

namespace
{

QString fileOf(const QString& language)
{
    return QLatin1Char('/') + language + QStringLiteral(".json");
}

QString baseLanguage()
{
    return LanguageDefinitions::getFirstFallbackLanguageFilename();
}

/** A folder that holds nothing but some of the languages of another. */
class FewLanguages
{
public:
    FewLanguages(const TextFolder& folder, const QStringList& languages)
    {
        for (const QString& language : languages)
            QFile::copy(folder.translations() + fileOf(language), path() + fileOf(language));
    }

    QString path() const { return m_Folder.path(); }

private:
    QTemporaryDir m_Folder;
};

void loadsLanguage(benchmark::State& state, const TextFolder& folder)
{
    const FewLanguages languages(folder, {TextFolder::language()});
    for (auto _ : state) {
        // No short texts are there; without a name for them the current folder would be loaded.
        const TextManagerBase texts(languages.path() + QLatin1Char('/'), TextFolder::language(),
                                    TextFolder::shortFolder());
        benchmark::DoNotOptimize(&texts);
    }
}

ExchangeFile collect(const QString& path)
{
    const ExchangeFolder folder(path, QString(), baseLanguage());
    QString fault;
    const auto texts = folder.read(TextFolder::language(), fault);
    return texts ? collectUnits(*texts, ExchangeSelection::All) : ExchangeFile();
}

void exports(benchmark::State& state, const TextFolder& folder, const ExchangeFormat* format)
{
    const FewLanguages languages(folder, {TextFolder::language(), baseLanguage()});
    for (auto _ : state)
        benchmark::DoNotOptimize(format->write(collect(languages.path())));
}

void imports(benchmark::State& state, const TextFolder& folder, const ExchangeFormat* format)
{
    const FewLanguages languages(folder, {TextFolder::language(), baseLanguage()});
    ExchangeFile file = collect(languages.path());
    int turn = 0;
    for (auto _ : state) {
        state.PauseTiming();
        for (ExchangeUnit& unit : file.units)
            unit.text = unit.text.left(unit.text.size() - (turn > 0 ? 1 : 0)) +
                        QLatin1Char(turn % 2 == 0 ? '.' : '!');
        ++turn;
        const QByteArray bytes = format->write(file);
        state.ResumeTiming();

        ExchangeFile read;
        format->read(bytes, read);
        const ExchangeFolder texts(languages.path(), QString(), baseLanguage());
        std::vector<std::unique_ptr<LanguageImport>> import;
        QString fault;
        import.push_back(
            LanguageImport::open(texts, TextFolder::language(), read, ImportOptions(), fault));
        if (import.front() == nullptr || import.front()->changes().size() != file.units.size() ||
            !LanguageImport::save(import, fault))
            state.SkipWithError("not every text was taken");
    }
}

bool addAll(const TextFolder& folder)
{
    benchmark::SetDefaultTimeUnit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("loadsLanguage", loadsLanguage, folder);
    for (const QString& name : ExchangeFormat::names()) {
        const std::string suffix = '/' + name.toStdString();
        const ExchangeFormat* format = ExchangeFormat::byName(name);
        benchmark::RegisterBenchmark(("exports" + suffix).c_str(), exports, folder, format);
        benchmark::RegisterBenchmark(("imports" + suffix).c_str(), imports, folder, format);
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv, addAll);
}
