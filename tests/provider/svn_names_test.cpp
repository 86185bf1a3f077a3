#include "provider/svn/repository_names.h"
#include "svn_fixture.h"

namespace quenvolta
{

namespace
{

using SvnNames = SvnFixture;

TEST_F(SvnNames, HostileNamesAndPathsTouchNothing)
{
    m_store.Create(u"good"_s);
    const QStringList before = Listing();
    const QStringList names{u""_s,
                            u"."_s,
                            u".."_s,
                            u"../outside"_s,
                            u"a/b"_s,
                            u"/etc"_s,
                            u".hidden"_s,
                            QString(QChar(0)),
                            u"a\nb"_s,
                            u"a\u2028b"_s,
                            QString(QChar(0xD800)),
                            QString(256, u'x'),
                            QString(128, u'ä'),
                            QString(10000, u'y')};
    for (const QString& name : names) {
        for (const ProviderError& error :
             {ErrorOf([&] { m_store.Create(name); }), ErrorOf([&] { m_store.Delete(name); }),
              ErrorOf([&] { m_store.Rename(u"good"_s, name); }), ErrorOf([&] { m_store.Rename(name, u"new"_s); }),
              ErrorOf([&] { m_store.Read(name); }), ErrorOf([&] { m_store.Exists(name); }),
              ErrorOf([&] { m_store.Upgrade(name); }), ErrorOf([&] { m_store.Children(name, u"/"_s); })}) {
            EXPECT_EQ(error.Code(), WBEM_E_INVALID_PARAMETER) << error.what();
            EXPECT_LT(error.Description().size(), 500);
        }
    }
    for (const QString& name : {u"a\\b"_s, u"a."_s, u" a"_s, u"a\u00a0"_s, u"a:b"_s, u"a]b"_s, u"a&b"_s})
        EXPECT_EQ(ErrorOf([&] { m_store.Create(name); }).Code(), WBEM_E_INVALID_PARAMETER) << name.toStdString();

    const QStringList paths{u""_s,
                            u"a"_s,
                            u"/a/"_s,
                            u"//"_s,
                            u"/a//b"_s,
                            u"/../x"_s,
                            u"/a/./b"_s,
                            u"/a/.."_s,
                            u"/a\tb"_s,
                            u"/"_s + QChar(0),
                            u"/"_s + QChar(0xDC00),
                            u'/' + QString(5000, u'a')};
    for (const QString& path : paths) {
        EXPECT_EQ(ErrorOf([&] { m_store.Entry(u"good"_s, path); }).Code(), WBEM_E_INVALID_PARAMETER);
        EXPECT_EQ(ErrorOf([&] { m_store.CreateFolders(u"good"_s, {path}, {}); }).Code(), WBEM_E_INVALID_PARAMETER);
        EXPECT_EQ(ErrorOf([&] { m_store.DeleteFolders(u"good"_s, {path}, {}); }).Code(), WBEM_E_INVALID_PARAMETER);
    }
    EXPECT_EQ(ErrorOf([&] { m_store.CreateFolders(u"good"_s, {u'/' + QString(256, u'a')}, {}); }).Code(),
              WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(Listing(), before);
    EXPECT_EQ(ErrorOf([&] { m_store.Create(u"a\nb"_s); }).Description(),
              u"The repository name 'a\\u000ab' is not valid: it contains a control character or a line break."_s);
}

TEST_F(SvnNames, UnusualButHarmlessNamesWork)
{
    for (const QString& name : {u"with blank"_s, u"größe-日本-😀"_s, QString(255, u'x'), u"-rf"_s, u"%1%n$(id)'\""_s}) {
        m_store.Create(name);
        m_store.CreateFolders(name, {u"/größe %2 😀"_s}, {});
        EXPECT_EQ(m_store.Children(name, u"/"_s).at(0).name, u"größe %2 😀"_s);
        EXPECT_EQ(ListedNames(), QStringList{name});
        m_store.Delete(name);
    }
}

} // namespace

} // namespace quenvolta
