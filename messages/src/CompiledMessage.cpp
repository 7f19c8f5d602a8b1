#include "CompiledMessage.h"

#include "Icu.h"
#include "MessageArgument.h"
#include "MessagePatternInfo.h"

CompiledMessage::CompiledMessage(const QString& pattern, const QString& languageKey)
{
    const MessagePatternInfo info(pattern);
    if (!info.isValid()) {
        m_StrError =
            QStringLiteral("%1, at character %2").arg(info.getError()).arg(info.getErrorOffset());
        return;
    }
    m_ArgumentNames = info.getArguments();
    for (const QString& name : qAsConst(m_ArgumentNames))
        m_IcuNames.emplace_back(Icu::view(name).getBuffer(), name.size());
    m_Values.resize(m_IcuNames.size());
    UErrorCode status = U_ZERO_ERROR;
    m_Format = std::make_unique<icu::MessageFormat>(Icu::view(pattern), Icu::localeOf(languageKey),
                                                    status);
    if (U_FAILURE(status) != 0)
        m_StrError = Icu::describe(status);
}

QString CompiledMessage::format(const QVariantMap& arguments, QString& error)
{
    if (!m_StrError.isEmpty())
        error = m_StrError;
    if (!error.isEmpty() || !takeArguments(arguments, error))
        return QString();
    UErrorCode status = U_ZERO_ERROR;
    m_Format->format(m_IcuNames.data(), m_Values.data(), static_cast<int32_t>(m_Values.size()),
                     m_Message.remove(), status);
    if (U_FAILURE(status) != 0) {
        error = Icu::describe(status);
        return QString();
    }
    return Icu::toQt(m_Message);
}

bool CompiledMessage::takeArguments(const QVariantMap& arguments, QString& error)
{
    auto value = m_Values.begin();
    for (const QString& name : qAsConst(m_ArgumentNames)) {
        const auto argument = arguments.constFind(name);
        if (argument == arguments.constEnd() || !argument->isValid()) {
            error = QStringLiteral("argument '%1' is missing").arg(name);
            return false;
        }
        if (!toFormattable(*argument, *value)) {
            error = QStringLiteral("argument '%1' cannot be shown: it is of the type %2")
                        .arg(name, QLatin1String(argument->typeName()));
            return false;
        }
        ++value;
    }
    return true;
}
