// Messages with one number, and beside them what ICU alone takes to format the same.

#include <TextManagerBase.h>
#include <TextMessages.h>

#include <benchmark/benchmark.h>

#include <QDebug>
#include <QJsonObject>

#include <unicode/msgfmt.h>

#include <vector>

namespace
{

const QString plural = QStringLiteral(
    "{days, plural, one {Filter change due in one day} other {Filter change due in # days}}");
const QString plain = QStringLiteral("Filter change due in {days} days");
const QString language = QStringLiteral("en_US");

/** Numbers that change, as on a screen, each made into what a message takes before the time runs.
 */
template<typename Argument>
class Numbers
{
public:
    template<typename Make>
    explicit Numbers(Make make)
    {
        for (int number = 0; number < 100; ++number)
            m_Arguments.push_back(make(number));
    }
    const Argument& next() { return m_Arguments[m_Next++ % m_Arguments.size()]; }

private:
    std::vector<Argument> m_Arguments;
    std::size_t m_Next = 0;
};

QVariantMap argumentsWith(int number)
{
    return {{QStringLiteral("days"), number}};
}

QString formatByIcu(const icu::MessageFormat& format, int number)
{
    const icu::UnicodeString name(u"days");
    const icu::Formattable argument(number);
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString message;
    format.format(&name, &argument, 1, message, status);
    return QString(reinterpret_cast<const QChar*>(message.getBuffer()), message.length());
}

icu::MessageFormat compile(const QString& pattern)
{
    UErrorCode status = U_ZERO_ERROR;
    return icu::MessageFormat(
        icu::UnicodeString(reinterpret_cast<const char16_t*>(pattern.utf16()), pattern.size()),
        icu::Locale("en_US"), status);
}

/** A text manager whose text at "Due" is the message. */
QJsonObject documentWith(const QString& pattern)
{
    const QJsonObject due{{QStringLiteral("text"), pattern}};
    return {{QStringLiteral("Content"), QJsonObject{{QStringLiteral("Due"), due}}}};
}

void getMessage(benchmark::State& state, const QString& pattern)
{
    QJsonObject document = documentWith(pattern);
    const TextManagerBase textManager(language, document);
    const TextMessages messages(textManager);
    const icu::MessageFormat format = compile(pattern);
    const auto message = [&](const QVariantMap& arguments) {
        return messages.getMessage(QStringLiteral("Due"), arguments, language);
    };
    if (message(argumentsWith(12)) != formatByIcu(format, 12))
        return state.SkipWithError("the library and ICU differ");
    Numbers<QVariantMap> numbers(argumentsWith);
    for (auto _ : state)
        benchmark::DoNotOptimize(message(numbers.next()));
}
BENCHMARK_CAPTURE(getMessage, plural, plural);
BENCHMARK_CAPTURE(getMessage, plain, plain);

/** Nothing but the call, into a string that is there. */
void icuAlone(benchmark::State& state, const QString& pattern)
{
    const icu::MessageFormat format = compile(pattern);
    const icu::UnicodeString name(u"days");
    icu::UnicodeString message;
    Numbers<icu::Formattable> numbers([](int number) { return icu::Formattable(number); });
    for (auto _ : state) {
        UErrorCode status = U_ZERO_ERROR;
        benchmark::DoNotOptimize(
            format.format(&name, &numbers.next(), 1, message.remove(), status));
    }
}
BENCHMARK_CAPTURE(icuAlone, plural, plural);
BENCHMARK_CAPTURE(icuAlone, plain, plain);

/** What a pattern costs that is not remembered. */
void icuCompiles(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(formatByIcu(compile(plural), 12));
}
BENCHMARK(icuCompiles);

} // namespace

BENCHMARK_MAIN();
