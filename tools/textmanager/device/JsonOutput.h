#pragma once

#include <QJsonDocument>

#include <functional>

/**
 * Changes a document and prints it piece by piece: what is printed is never in memory as a whole,
 * and the elements of an array are let go as they are printed.
 *
 * @param document is printed without a copy when it is moved here.
 * @param change is given an object as a whole, and an array in parts.
 */
void printJson(QJsonDocument document, QJsonDocument::JsonFormat format,
               const std::function<QJsonDocument(QJsonDocument)>& change);
