// The smallest program that uses the installed library: prints one text.

#include <TextKeys.h> // made of the language files in the build
#include <TextManagerBase.h>

#include <cstdio>

int main(int argc, char* argv[])
{
    if (argc < 3 || argc > 4) {
        std::fprintf(stderr, "Usage: consumer FOLDER/ LANGUAGE [URL]\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const QString language = QString::fromLocal8Bit(argv[2]);
    const QString url = argc == 4 ? QString::fromLocal8Bit(argv[3]) : TextKeys::Menu::Save;

    const TextManagerBase texts(folder, language, QStringLiteral("short"));
    const QString text = texts.getText(url, language);
    std::printf("%s\n", text.toUtf8().constData());
    return text.isEmpty() ? 1 : 0;
}
