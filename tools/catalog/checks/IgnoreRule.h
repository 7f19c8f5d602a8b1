#pragma once

#include "Finding.h"

#include <QRegularExpression>
#include <QString>

/** What is not to be reported: "same-as-base", or with a pattern, for some URLs only. */
class IgnoreRule
{
public:
    /** @param rule an id and, behind a colon, a pattern of URLs in which "*" stands for anything
     * within a key, and "**" for anything across keys. */
    explicit IgnoreRule(const QString& rule);

    /** Why there is no such rule, as a sentence; empty when it is sound. */
    QString fault() const { return m_StrFault; }

    bool matches(const Finding& finding) const;

private:
    QString m_StrId;
    QRegularExpression m_Urls; ///< without a pattern when all are meant
    QString m_StrFault;
};
