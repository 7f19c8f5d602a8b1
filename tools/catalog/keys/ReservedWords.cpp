#include "ReservedWords.h"

#include <QSet>
#include <QStringList>

namespace
{

QSet<QString> wordsOf(const QString& list)
{
    const QStringList words = list.split(QLatin1Char(' '));
    return QSet<QString>(words.begin(), words.end());
}

} // namespace

bool isReservedInCpp(const QString& word)
{
    static const QSet<QString> words = wordsOf(QStringLiteral(
        "alignas alignof and and_eq asm auto bitand bitor bool break case catch char char16_t "
        "char32_t char8_t class co_await co_return co_yield compl concept const const_cast "
        "consteval constexpr constinit continue decltype default delete do double dynamic_cast "
        "else enum explicit export extern false float for friend goto if import inline int long "
        "module mutable namespace new noexcept not not_eq nullptr operator or or_eq private "
        "protected public register reinterpret_cast requires return short signed sizeof static "
        "static_assert static_cast struct switch template this thread_local throw true try typedef "
        "typeid typename union unsigned using virtual void volatile wchar_t while xor xor_eq "
        "assert BUFSIZ EOF errno FALSE I INFINITY linux major makedev minor NAN NULL offsetof "
        "setjmp stderr stdin stdout TRUE unix emit foreach forever signals slots"));
    return words.contains(word);
}

bool isReservedInQml(const QString& word)
{
    static const QSet<QString> words = wordsOf(QStringLiteral(
        "alias as async await break case catch class component const continue debugger default "
        "delete destroyed do else enum export extends false finally for from function get id if "
        "implements import in instanceof interface let new null objectName of on package pragma "
        "private property protected public readonly required return set signal static super switch "
        "this throw true try typeof undefined var void while with yield"));
    return words.contains(word);
}
