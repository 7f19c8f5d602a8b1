#pragma once

#include <QString>

/**
 * Makes the rows of a data-driven test out of a text: a line of column names, then a line for each
 * row, cells separated by "|" and trimmed. A line that begins with ".. " goes on from the one
 * before. A row's name is its whole line.
 */
void addTable(const char* table);

/** The current row's cell in a column. "\n" and "\r" in it stand for what they are in C++, "→" for
 * a tab, and "″" for a quotation mark, of which the compiler of meta-objects wants pairs in a row.
 */
QString cell(const QString& column);
bool hasCell(const QString& column);
