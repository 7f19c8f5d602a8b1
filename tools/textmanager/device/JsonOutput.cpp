#include "JsonOutput.h"

#include "Console.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <utility>

namespace
{

using Change = std::function<QJsonDocument(QJsonDocument)>;

QJsonDocument unchanged(QJsonDocument document)
{
    return document;
}

/** Writes objects and arrays itself down to the first array, whose elements are Qt's. */
class JsonOutput
{
public:
    explicit JsonOutput(QJsonDocument::JsonFormat format)
        : m_Format(format)
        , m_IsIndented(format == QJsonDocument::Indented)
    {
    }

    void printObject(const QJsonObject& object, int level) const
    {
        const char* before = "{";
        for (auto member = object.begin(); member != object.end(); ++member) {
            printPart(before + lineBreak(level + 1) + compact(member.key()) +
                      (m_IsIndented ? ": " : ":"));
            if (member.value().isObject())
                printObject(member.value().toObject(), level + 1);
            else if (member.value().isArray())
                printArray(member.value().toArray(), level + 1, unchanged);
            else
                printPart(compact(member.value()));
            before = ",";
        }
        printPart(object.isEmpty() ? QByteArray("{}") : lineBreak(level) + '}');
    }

    void printArray(QJsonArray array, int level, const Change& change) const
    {
        constexpr int elementsOfAPart = 256;
        const char* before = "[";
        for (QString::size_type begin = 0; begin < array.size(); begin += elementsOfAPart) {
            QJsonArray part;
            const auto end = std::min(begin + elementsOfAPart, array.size());
            for (auto index = begin; index < end; ++index) {
                part.append(array.at(index));
                array[index] = QJsonValue(); // the part alone holds it, and lets it go
            }
            printPart(before);
            printPart(elements(change(QJsonDocument(std::exchange(part, QJsonArray()))), level));
            before = ",";
        }
        printPart(array.isEmpty() ? QByteArray("[]") : lineBreak(level) + ']');
    }

private:
    /** The elements as they stand between the brackets of an array. */
    QByteArray elements(const QJsonDocument& part, int level) const
    {
        QByteArray json = part.toJson(m_Format);
        json.chop(m_IsIndented ? 3 : 1); // "\n]\n", "]"
        json.remove(0, 1);
        if (level > 0)
            json.replace("\n", lineBreak(level)); // those of texts are escaped
        return json;
    }

    static QByteArray compact(const QJsonValue& scalar)
    {
        const QByteArray list = QJsonDocument(QJsonArray{scalar}).toJson(QJsonDocument::Compact);
        return list.mid(1, list.size() - 2);
    }

    QByteArray lineBreak(int level) const
    {
        constexpr int blanksOfALevel = 4;
        return m_IsIndented ? '\n' + QByteArray(level * blanksOfALevel, ' ') : QByteArray();
    }

    const QJsonDocument::JsonFormat m_Format;
    const bool m_IsIndented;
};

} // namespace

void printJson(QJsonDocument document, QJsonDocument::JsonFormat format, const Change& change)
{
    const JsonOutput output(format);
    if (document.isArray()) {
        QJsonArray array = document.array();
        document = QJsonDocument(); // which would hold the elements, too
        output.printArray(std::move(array), 0, change);
    } else {
        output.printObject(change(std::move(document)).object(), 0);
    }
    printPart("\n");
}
