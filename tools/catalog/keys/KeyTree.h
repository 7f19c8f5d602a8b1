#pragma once

#include <QMap>
#include <QString>
#include <QVector>

#include <functional>

/** A text URL with what documents it in generated code. */
struct KeyText {
    QString url;
    QString text;    ///< of the base language
    QString comment; ///< of the base language
};

/** The text URLs of a folder as a tree whose nodes have names that a programming language takes. */
class KeyTree
{
public:
    /** Makes a name of letters, digits and "_" one that the generated language takes. */
    using FinishName = std::function<QString(const QString& name)>;

    struct Node {
        QString name; ///< unique among the siblings
        QString url;  ///< empty for a node that has no text of its own
        QString text;
        QString comment;
        QMap<QString, Node> children; ///< by their keys
    };

    /**
     * Names are the keys themselves, with "_" for each run of what is no letter or digit of ASCII.
     * Where two keys of one level would have the same name, neither gets it, and both are spelled
     * out: a new key that takes an old name away makes an error, and never another text of it.
     */
    KeyTree(const QVector<KeyText>& texts, const FinishName& finishName);

    const Node& root() const { return m_Root; }

private:
    Node m_Root;
};
