// Prints one text with its arguments filled in: whole numbers as numbers, all else as strings.

#include <TextManagerBase.h>
#include <TextMessages.h>

#include <cstdio>

namespace
{

QVariantMap readArguments(const QStringList& words)
{
    QVariantMap arguments;
    for (const QString& word : words) {
        const QString value = word.section(QLatin1Char('='), 1);
        bool isNumber = false;
        const int number = value.toInt(&isNumber);
        arguments.insert(word.section(QLatin1Char('='), 0, 0),
                         isNumber ? QVariant(number) : QVariant(value));
    }
    return arguments;
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc < 4) {
        std::fprintf(stderr, "Usage: messages FOLDER/ LANGUAGE URL [NAME=VALUE...]\n");
        return 2;
    }
    QStringList words;
    for (int index = 1; index < argc; ++index)
        words.append(QString::fromLocal8Bit(argv[index]));
    const TextManagerBase texts(words.at(0), words.at(1), QStringLiteral("short"));
    const TextMessages messages(texts);

    const QString message =
        messages.getMessage(words.at(2), readArguments(words.mid(3)), QString());
    std::printf("%s\n", message.toUtf8().constData());
    return message.isEmpty() ? 1 : 0;
}
