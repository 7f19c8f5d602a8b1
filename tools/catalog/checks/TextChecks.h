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
    int offset = 0; ///< where in the text; 0 where all of it is meant
    QString reason;
};
using TextFindings = QVector<TextFinding>;

/** All that the checks find in one text, which is not empty. */
TextFindings checkText(const TextToCheck& text);

/**
 * All that they find in one short text.
 *
 * @param longest what a short text may have at most, in characters; 0 for no limit.
 */
TextFindings checkShortText(const TextToCheck& text, const QString& fullText, int longest);
