#include "Peers.h"

#include <benchmark/benchmark.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <clocale>

TranslatorPeer::TranslatorPeer(const TextFolder& folder)
{
    m_Translator.load(folder.peers() + TextFolder::language() + QStringLiteral(".qm"));
}

GettextPeer::GettextPeer(const TextFolder& folder)
{
    // The one UTF-8 locale that every system has; LANGUAGE chooses the texts.
    std::setlocale(LC_ALL, "C.UTF-8");
    qputenv("LANGUAGE", TextFolder::language().toLatin1());
    bindtextdomain(domain(), QFile::encodeName(folder.peers()).constData());
    bind_textdomain_codeset(domain(), "UTF-8");
}

IcuPeer::IcuPeer(const TextFolder& folder)
{
    UErrorCode error = U_ZERO_ERROR;
    m_Bundle = ures_open(QFile::encodeName(folder.peers()).constData(),
                         TextFolder::language().toLatin1().constData(), &error);
}

IcuPeer::~IcuPeer()
{
    ures_close(m_Bundle);
}

HashPeer::HashPeer(const Languages& languages)
    : m_Languages(languages)
{
}

void HashPeer::lookForChanges(const TextFolder& folder) const
{
    const QMutexLocker locker(&m_Mutex);
    for (const QString& path :
         {folder.languages(), folder.languages() + TextFolder::shortFolder()}) {
        for (const QFileInfo& file : QDir(path).entryInfoList(QDir::Files))
            benchmark::DoNotOptimize(file.lastModified());
    }
}
