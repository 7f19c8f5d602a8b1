#pragma once

#include <QJsonObject>
#include <QString>

#include <array>
#include <optional>

/**
 * A language file as it was read last. It shares the data of the document with whoever keeps it,
 * and holds no bytes of the file.
 */
class LanguageFile
{
public:
    /**
     * Reads the file, always the same. When its bytes are still those of the last time, it is not
     * parsed again.
     *
     * @return its top-level object; nothing when it cannot be opened or is no JSON.
     */
    std::optional<QJsonObject> read(const QString& filePath);

private:
    using Digest = std::array<unsigned char, 16>;

    static Digest digestOf(const QByteArray& bytes);

    std::optional<Digest> m_Digest;
    QJsonObject m_Document;
};
