#include "ScreenRecorder.h"

#include <TextManager.h>
#include <TextManagerQuick.h>

#include <QCommandLineParser>
#include <QDebug>
#include <QFileInfo>
#include <QFont>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <memory>

int main(int argc, char* argv[])
{
    const QGuiApplication application(argc, argv);
    QFont font; // Latin letters, then what the others are written in
    font.setFamilies({QStringLiteral("Inter"), QStringLiteral("Noto Sans Arabic UI"),
                      QStringLiteral("VL PGothic")});
    QGuiApplication::setFont(font);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows the screen of a ventilation unit's controller in the "
                       "language of the device's settings, and follows when they change."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("DIR"),
                                 QStringLiteral("Folder of language files."));
    const QCommandLineOption record(QStringLiteral("record"),
                                    QStringLiteral("Write a picture of each language that is shown "
                                                   "into FOLDER, and the text of each label to "
                                                   "standard output."),
                                    QStringLiteral("FOLDER"));
    parser.addOption(record);
    parser.process(application);
    const QString folder = parser.positionalArguments().value(0);
    if (parser.positionalArguments().size() != 1 || !QFileInfo(folder).isDir()) {
        qCritical().noquote() << "expected one folder of language files, found:"
                              << parser.positionalArguments().join(QLatin1Char(' '));
        return 2;
    }

    TextManager textManager(folder + QLatin1Char('/'), QString());
    QQmlApplicationEngine engine;
    TextManagerQuick::install(engine, textManager);
    engine.load(QUrl(QStringLiteral("qrc:/live-text/main.qml")));
    if (engine.rootObjects().isEmpty())
        return 2; // the engine has said why

    std::unique_ptr<ScreenRecorder> recorder;
    if (parser.isSet(record)) {
        auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().first());
        recorder = std::make_unique<ScreenRecorder>(*window, engine, parser.value(record));
    }
    return QGuiApplication::exec();
}
