#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace quenvolta::permissioncases
{

/// One server's users, groups and permissions, and what each user may do there: for the provider's own reading, for
/// Subversion's library, and for a client of the web service.

struct Group {
    QString name;
    QStringList users;
    QStringList groups = {};
};

/// Levels are 0 (no access), 1 (read only), 2 (read and write).
struct Entry {
    QString repository; ///< empty for the server
    QString path;
    char kind; ///< '*' Everyone, 'u' a user, 'g' a group
    QString account;
    int level;
};

struct Case {
    QString user;
    QString repository;
    QString path;
    int level;
};

inline QStringList Users()
{
    return {QStringLiteral("ann"),     QStringLiteral("ben"),  QStringLiteral("cat"),      QStringLiteral("dan"),
            QStringLiteral("eve"),     QStringLiteral("fay"),  QStringLiteral("gus"),      QStringLiteral("Ann"),
            QStringLiteral("ann b;c"), QStringLiteral("ödön"), QStringLiteral("a%(ann)s"), QStringLiteral("Анна")};
}

/// Members stand before the groups that hold them.
inline QList<Group> Groups()
{
    return {
        {QStringLiteral("devs"), {QStringLiteral("ann"), QStringLiteral("ben")}},
        {QStringLiteral("leads"), {QStringLiteral("cat")}, {QStringLiteral("devs")}},
        {QStringLiteral("interns"), {QStringLiteral("ben")}},
        {QStringLiteral("auditors"), {QStringLiteral("dan")}},
        {QStringLiteral("many"), Users().mid(0, 7)},
        {QStringLiteral("nobody"), {}},
        // Named as a user who isn't in it, as what rules could take for something else, and in another script.
        {QStringLiteral("ann"), {QStringLiteral("cat")}},
        {QStringLiteral("w@x$y~&%(z)s"), {QStringLiteral("ben")}},
        {QStringLiteral("Группа \"1\""), {}, {QStringLiteral("w@x$y~&%(z)s")}},
        {QStringLiteral("upper"), {QStringLiteral("gus")}, {QStringLiteral("Группа \"1\""), QStringLiteral("ann")}}};
}

/// A repository whose name has every allowed sign that means something to rules, configurations or addresses.
inline QString Odd()
{
    return QStringLiteral("Проект =@~$#%41;'\"<{x}");
}

inline QStringList Repositories()
{
    return {QStringLiteral("closed"), QStringLiteral("open"),  QStringLiteral("own"),
            QStringLiteral("groups"), QStringLiteral("deny"),  QStringLiteral("crowd"),
            QStringLiteral("names"),  QStringLiteral("twins"), Odd()};
}

/// Every folder that a case names, parents first.
inline QList<std::pair<QString, QString>> Folders()
{
    QList<std::pair<QString, QString>> folders;
    for (const auto& [repository, paths] : QList<std::pair<QString, QStringList>>{
             {QStringLiteral("closed"), {QStringLiteral("/x")}},
             {QStringLiteral("own"), {QStringLiteral("/a"), QStringLiteral("/a/b"), QStringLiteral("/ab")}},
             {QStringLiteral("groups"), {QStringLiteral("/x"), QStringLiteral("/x/y"), QStringLiteral("/x/y/z")}},
             {QStringLiteral("deny"), {QStringLiteral("/s"), QStringLiteral("/s/t")}},
             {QStringLiteral("crowd"), {QStringLiteral("/p"), QStringLiteral("/p/q")}},
             {QStringLiteral("names"),
              {QStringLiteral("/Übung [1 #x"), QStringLiteral("/a=b:c@d"), QStringLiteral("/A=b:c@d")}},
             {QStringLiteral("twins"), {QStringLiteral("/a"), QStringLiteral("/a/b")}},
             {Odd(),
              {QStringLiteral("/ x"), QStringLiteral("/~$&;"), QStringLiteral("/%41"), QStringLiteral("/A"),
               QStringLiteral("/[groups"), QStringLiteral("/#"), QStringLiteral("/#/*"), QStringLiteral("/李\\n"),
               QStringLiteral("/o\u0308"), QStringLiteral("/\u00f6")}}}) {
        for (const QString& path : paths)
            folders.append({repository, path});
    }
    return folders;
}

inline QList<Entry> Entries()
{
    const auto s = [](const char16_t* text) { return QString::fromUtf16(text); };
    return {
        {{}, {}, 'g', s(u"auditors"), 1},
        {{}, {}, 'u', s(u"fay"), 0},
        {{}, {}, 'u', s(u"eve"), 2},
        {s(u"open"), s(u"/"), '*', {}, 2},
        {s(u"own"), s(u"/"), 'u', s(u"ann"), 0},
        {s(u"own"), s(u"/"), 'g', s(u"devs"), 2},
        {s(u"own"), s(u"/a"), '*', {}, 1},
        {s(u"own"), s(u"/a/b"), 'u', s(u"ann"), 1},
        {s(u"own"), s(u"/a/b"), 'u', s(u"eve"), 0},
        {s(u"groups"), s(u"/"), 'g', s(u"devs"), 2},
        {s(u"groups"), s(u"/"), 'g', s(u"interns"), 0},
        {s(u"groups"), s(u"/"), 'g', s(u"leads"), 1},
        {s(u"groups"), s(u"/"), 'g', s(u"nobody"), 2},
        {s(u"groups"), s(u"/x"), 'g', s(u"devs"), 1},
        {s(u"groups"), s(u"/x/y"), 'g', s(u"interns"), 2},
        {s(u"groups"), s(u"/x/y/z"), 'g', s(u"devs"), 0},
        {s(u"deny"), s(u"/"), '*', {}, 0},
        {s(u"deny"), s(u"/"), 'g', s(u"leads"), 2},
        {s(u"deny"), s(u"/s"), 'g', s(u"leads"), 0},
        {s(u"deny"), s(u"/s"), 'u', s(u"cat"), 2},
        {s(u"deny"), s(u"/s/t"), '*', {}, 2},
        {s(u"crowd"), s(u"/"), 'g', s(u"many"), 2},
        {s(u"crowd"), s(u"/"), 'u', s(u"gus"), 1},
        {s(u"crowd"), s(u"/"), '*', {}, 1},
        {s(u"crowd"), s(u"/p"), 'g', s(u"interns"), 0},
        {s(u"crowd"), s(u"/p"), '*', {}, 2},
        {s(u"crowd"), s(u"/p/q"), 'g', s(u"many"), 1},
        {s(u"names"), s(u"/"), 'u', s(u"ödön"), 2},
        {s(u"names"), s(u"/"), 'u', s(u"ann b;c"), 1},
        {s(u"names"), s(u"/"), 'u', s(u"a%(ann)s"), 1},
        {s(u"names"), s(u"/"), 'u', s(u"Ann"), 1},
        {s(u"names"), s(u"/Übung [1 #x"), 'u', s(u"Анна"), 2},
        {s(u"names"), s(u"/a=b:c@d"), 'u', s(u"ann"), 2},
        {s(u"twins"), s(u"/"), 'u', s(u"ann"), 1},
        {s(u"twins"), s(u"/"), 'g', s(u"ann"), 2},
        {s(u"twins"), s(u"/a"), 'g', s(u"upper"), 1},
        {s(u"twins"), s(u"/a"), 'g', s(u"Группа \"1\""), 2},
        {s(u"twins"), s(u"/a/b"), 'g', s(u"w@x$y~&%(z)s"), 0},
        {s(u"twins"), s(u"/a/b"), 'u', s(u"gus"), 2},
        {Odd(), s(u"/"), 'u', s(u"a%(ann)s"), 1},
        {Odd(), s(u"/"), 'g', s(u"w@x$y~&%(z)s"), 2},
        {Odd(), s(u"/ x"), 'u', s(u"ann"), 2},
        {Odd(), s(u"/~$&;"), 'u', s(u"ann"), 1},
        {Odd(), s(u"/%41"), 'u', s(u"cat"), 1},
        {Odd(), s(u"/A"), 'u', s(u"cat"), 2},
        {Odd(), s(u"/[groups"), 'g', s(u"upper"), 1},
        {Odd(), s(u"/#"), '*', {}, 1},
        {Odd(), s(u"/#/*"), 'u', s(u"gus"), 2},
        {Odd(), s(u"/李\\n"), 'g', s(u"Группа \"1\""), 1},
        {Odd(), s(u"/李\\n"), 'u', s(u"Анна"), 2},
        {Odd(), s(u"/o\u0308"), 'u', s(u"ödön"), 1},
        {Odd(), s(u"/\u00f6"), 'u', s(u"ödön"), 2},
    };
}

inline QList<Case> Cases()
{
    const auto s = [](const char16_t* text) { return QString::fromUtf16(text); };
    const QString root = s(u"/");
    return {
        // What is set on the server reaches every repository.
        {s(u"ann"), s(u"closed"), root, 0},
        {s(u"dan"), s(u"closed"), root, 1},
        {s(u"eve"), s(u"closed"), s(u"/x"), 2},
        {s(u"fay"), s(u"closed"), root, 0},
        // Everyone is who has no entry, and no group with one.
        {s(u"ann"), s(u"open"), root, 2},
        {s(u"gus"), s(u"open"), root, 2},
        {s(u"dan"), s(u"open"), root, 1},
        {s(u"fay"), s(u"open"), root, 0},
        // A user's own entry wins over those of groups, and over Everyone's further down.
        {s(u"ann"), s(u"own"), root, 0},
        {s(u"ben"), s(u"own"), root, 2},
        {s(u"cat"), s(u"own"), root, 0},
        {s(u"ann"), s(u"own"), s(u"/a"), 0},
        {s(u"ben"), s(u"own"), s(u"/a"), 2},
        {s(u"cat"), s(u"own"), s(u"/a"), 1},
        {s(u"eve"), s(u"own"), s(u"/a"), 2},
        {s(u"fay"), s(u"own"), s(u"/a"), 0},
        {s(u"ann"), s(u"own"), s(u"/a/b"), 1},
        {s(u"ben"), s(u"own"), s(u"/a/b"), 2},
        {s(u"cat"), s(u"own"), s(u"/a/b"), 1},
        {s(u"eve"), s(u"own"), s(u"/a/b"), 0},
        {s(u"cat"), s(u"own"), s(u"/ab"), 0},
        // Among groups no access wins, else the most; the nearest entry of each group counts.
        {s(u"ann"), s(u"groups"), root, 2},
        {s(u"ben"), s(u"groups"), root, 0},
        {s(u"cat"), s(u"groups"), root, 1},
        {s(u"dan"), s(u"groups"), root, 1},
        {s(u"ann"), s(u"groups"), s(u"/x"), 1},
        {s(u"ben"), s(u"groups"), s(u"/x"), 0},
        {s(u"cat"), s(u"groups"), s(u"/x"), 1},
        {s(u"ann"), s(u"groups"), s(u"/x/y"), 1},
        {s(u"ben"), s(u"groups"), s(u"/x/y"), 2},
        {s(u"ann"), s(u"groups"), s(u"/x/y/z"), 0},
        {s(u"ben"), s(u"groups"), s(u"/x/y/z"), 0},
        {s(u"cat"), s(u"groups"), s(u"/x/y/z"), 1},
        // Members of members belong; Everyone may be kept out and some let in, and the other way round.
        {s(u"ann"), s(u"deny"), root, 2},
        {s(u"gus"), s(u"deny"), root, 0},
        {s(u"dan"), s(u"deny"), root, 1},
        {s(u"ann"), s(u"deny"), s(u"/s"), 0},
        {s(u"cat"), s(u"deny"), s(u"/s"), 2},
        {s(u"ann"), s(u"deny"), s(u"/s/t"), 0},
        {s(u"cat"), s(u"deny"), s(u"/s/t"), 2},
        {s(u"gus"), s(u"deny"), s(u"/s/t"), 2},
        {s(u"dan"), s(u"deny"), s(u"/s/t"), 1},
        // A group that most of its members get exactly, and some less or more.
        {s(u"ann"), s(u"crowd"), root, 2},
        {s(u"gus"), s(u"crowd"), root, 1},
        {s(u"fay"), s(u"crowd"), root, 0},
        {s(u"Ann"), s(u"crowd"), root, 1},
        {s(u"ann"), s(u"crowd"), s(u"/p"), 2},
        {s(u"ben"), s(u"crowd"), s(u"/p"), 0},
        {s(u"Ann"), s(u"crowd"), s(u"/p"), 2},
        {s(u"ann"), s(u"crowd"), s(u"/p/q"), 1},
        {s(u"ben"), s(u"crowd"), s(u"/p/q"), 0},
        {s(u"gus"), s(u"crowd"), s(u"/p/q"), 1},
        {s(u"eve"), s(u"crowd"), s(u"/p/q"), 2},
        // Names are what they are.
        {s(u"ödön"), s(u"names"), root, 2},
        {s(u"ann b;c"), s(u"names"), root, 1},
        {s(u"a%(ann)s"), s(u"names"), root, 1},
        {s(u"Ann"), s(u"names"), root, 1},
        {s(u"ann"), s(u"names"), root, 0},
        {s(u"Анна"), s(u"names"), root, 0},
        {s(u"Анна"), s(u"names"), s(u"/Übung [1 #x"), 2},
        {s(u"ann"), s(u"names"), s(u"/a=b:c@d"), 2},
        {s(u"ann"), s(u"names"), s(u"/A=b:c@d"), 0},
        // A group is never the user of its name; the nearest entry of each of several nested groups counts.
        {s(u"ann"), s(u"twins"), root, 1},
        {s(u"cat"), s(u"twins"), root, 2},
        {s(u"ben"), s(u"twins"), root, 0},
        {s(u"ann"), s(u"twins"), s(u"/a"), 1},
        {s(u"cat"), s(u"twins"), s(u"/a"), 2},
        {s(u"ben"), s(u"twins"), s(u"/a"), 2},
        {s(u"gus"), s(u"twins"), s(u"/a"), 1},
        {s(u"ben"), s(u"twins"), s(u"/a/b"), 0},
        {s(u"gus"), s(u"twins"), s(u"/a/b"), 2},
        {s(u"cat"), s(u"twins"), s(u"/a/b"), 2},
        // The signs of rules, configurations and addresses, in names of repositories and paths.
        {s(u"a%(ann)s"), Odd(), root, 1},
        {s(u"ben"), Odd(), root, 2},
        {s(u"ann"), Odd(), root, 0},
        {s(u"ann"), Odd(), s(u"/ x"), 2},
        {s(u"ann"), Odd(), s(u"/~$&;"), 1},
        {s(u"cat"), Odd(), s(u"/%41"), 1},
        {s(u"cat"), Odd(), s(u"/A"), 2},
        {s(u"gus"), Odd(), s(u"/[groups"), 1},
        {s(u"ben"), Odd(), s(u"/[groups"), 2},
        {s(u"ann"), Odd(), s(u"/#"), 1},
        {s(u"gus"), Odd(), s(u"/#"), 1},
        {s(u"gus"), Odd(), s(u"/#/*"), 2},
        {s(u"cat"), Odd(), s(u"/#/*"), 1},
        {s(u"ben"), Odd(), s(u"/李\\n"), 2},
        {s(u"Анна"), Odd(), s(u"/李\\n"), 2},
        {s(u"ödön"), Odd(), s(u"/o\u0308"), 1},
        {s(u"ödön"), Odd(), s(u"/\u00f6"), 2},
    };
}

} // namespace quenvolta::permissioncases
