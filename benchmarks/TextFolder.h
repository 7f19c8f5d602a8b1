#pragma once

#include <QString>
#include <QVector>

/** A folder that generate_texts.py wrote; it says there what is in it. */
class TextFolder
{
public:
    explicit TextFolder(const QString& path);

    /** Whether the folder holds texts. */
    bool isUsable() const;

    /** The language folders, each with the "/" at its end that a text manager wants. */
    QString languages() const;
    QString incompleteLanguages() const;
    QString peers() const;
    QString translations() const;

    /** The URLs of all texts; those which neither the short texts nor the incomplete German has. */
    QVector<QString> urls() const;
    QVector<QString> urlsShownInFull() const;

    /** The sub-folder of short texts in every language folder. */
    static QString shortFolder();
    /** The language that is looked up, which has all the texts, or few where it is incomplete. */
    static QString language();
    /** Every language that is looked up, the one above and then the fallback languages. */
    static QVector<QString> languageKeys();

private:
    QVector<QString> readList(const QString& name) const;

    QString m_StrPath;
};
