#pragma once

#include <QString>

// Control characters are lost or refused in files of translators: XML has none, gettext ends a text
// at U+0000, spreadsheets join line breaks of two kinds. So each but tab and line feed travels as
// its picture of the block "Control Pictures", ␇ for U+0007, which every tool keeps and a
// translator sees. What has no picture travels as its code, ␛{FFFE}. A picture that is itself in
// the text gets a ␛ before it.

/** The text in a form that all files hold. */
QString showControls(const QString& text);
/** As showControls(), the line feeds at both ends by their picture, too. */
QString showControlsAndEdges(const QString& text);
/** The text whose form that all files hold is @p shown. */
QString hideControls(const QString& shown);

/** The form of @p character that starts with ␛, whatever it is. */
QString codeOf(QChar character);
