#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QStringView>

/**
 * Makes @p value the member @p key of @p object, as QJsonObject::insert() does, for members that
 * are written again and again.
 *
 * An object of Qt 5 keeps the characters of every string that was ever replaced in it, and a text
 * that is rewritten for months would fill the memory: only building the object anew frees them. How
 * much it keeps cannot be told from outside, so this is done by chance, the more seldom the larger
 * the object is. On average a write copies one member, be it a long text a few, and what is kept is
 * in proportion to the object.
 */
void setMember(QJsonObject& object, QStringView key, const QJsonValue& value);
