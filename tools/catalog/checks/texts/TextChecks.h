#pragma once

#include "MarkupTags.h"
#include "Placeholders.h"
#include "TextData.h"
#include "WritingRules.h"

#include <QString>
#include <QVector>

/** A text, and what the checks compare of it. That of the base is made once for all languages. */
struct AnalyzedText {
    explicit AnalyzedText(const QString& text, const AnalyzedText* base = nullptr);

    QString text;
    Placeholders placeholders;
    MarkupTags tags;
    TextData data;
    int lineBreaks = 0; ///< a carriage return and a line feed are one
};

/** A text as it is checked. */
struct TextToCheck {
    const AnalyzedText& text;
    const AnalyzedText* base = nullptr; ///< null for a text of the base language itself
    const WritingRules& rules;
    const WritingRules& rulesOfBase;
    QString commentOfBase;
};

/** What a check found in a text. */
struct TextFinding {
    QString id;
    QString::size_type offset = 0; ///< where in the text; 0 where all of it is meant
    QString reason;
};
using TextFindings = QVector<TextFinding>;

/** All that the checks find in one text, which is not empty. */
TextFindings checkText(const TextToCheck& text);

/** How long a short text may be. */
struct ShortTextLimits {
    int longest = 0;        ///< in characters; 0 for no limit
    QString fullText;       ///< empty when there is none
    QString fullTextOfBase; ///< where the base's short text is the longer one, others may be, too
};

/** All that they find in one short text. */
TextFindings checkShortText(const TextToCheck& text, const ShortTextLimits& limits);
