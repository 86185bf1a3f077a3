#include "platform/wbem/object_path.h"
#include "platform/wbem/wbem_object.h"

#include <gtest/gtest.h>
#include <vector>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

QString TextOf(const IWbemPath& path)
{
    std::uint32_t length = 0;
    EXPECT_EQ(path.GetText(0, &length, nullptr), WBEM_E_BUFFER_TOO_SMALL);
    std::vector<char16_t> buffer(length, u'?');
    std::uint32_t shorter = length - 1;
    EXPECT_EQ(path.GetText(0, &shorter, buffer.data()), WBEM_E_BUFFER_TOO_SMALL);
    EXPECT_EQ(shorter, length);
    EXPECT_EQ(path.GetText(0, &length, buffer.data()), S_OK);
    EXPECT_EQ(buffer.back(), u'\0');
    return QString::fromUtf16(buffer.data(), static_cast<qsizetype>(length) - 1);
}

} // namespace

TEST(ObjectPath, EveryKeyValueComesBackFromTheText)
{
    for (const QString& value : {u"plain"_s, u""_s, u"with \"quotes\" and \\ and \\\""_s, u"\\"_s, u"a,B=\"c\""_s,
                                 u"\u00E4/\n \U0001F600"_s}) {
        const auto path = CreateWbemPath();
        ASSERT_EQ(path->SetClassName(u"Quenvolta_RepositoryEntry"_s), S_OK);
        ASSERT_EQ(path->SetKey(u"RepositoryName"_s, 0, CimType::String, value), S_OK);
        ASSERT_EQ(path->SetKey(u"Path"_s, 0, CimType::String, u"/"_s), S_OK);
        const auto read = CreateWbemPath();
        ASSERT_EQ(read->SetText(TextOf(*path)), S_OK) << value.toStdString();
        QList<PathKey> keys;
        read->GetKeys(&keys);
        EXPECT_EQ(keys, (QList<PathKey>{{u"RepositoryName"_s, value}, {u"Path"_s, u"/"_s}}));
        EXPECT_EQ(TextOf(*read), TextOf(*path));
    }
    const auto path = CreateWbemPath();
    path->SetClassName(u"C"_s);
    path->SetKey(u"Name"_s, 0, CimType::String, u"a\"b\\c"_s);
    EXPECT_EQ(TextOf(*path), u"C.Name=\"a\\\"b\\\\c\""_s);
    path->SetKey(u"NAME"_s, 0, CimType::String, u"d"_s);
    EXPECT_EQ(TextOf(*path), u"C.Name=\"d\""_s);
    path->SetSingleton();
    EXPECT_EQ(TextOf(*path), u"C=@"_s);
}

TEST(ObjectPath, WhatIsNoPathChangesNothing)
{
    const auto path = CreateWbemPath();
    ASSERT_EQ(path->SetText(u"C.Name=\"a\""_s), S_OK);
    for (const QString& text :
         {u""_s, u"."_s, u"C."_s, u"C=x"_s, u"C=@x"_s, u"C.Name"_s, u"C.Name="_s, u"C.Name=a"_s, u"C.Name=\"a"_s,
          u"C.Name=\"a\\"_s, u"C.Name=\"a\\\""_s, u"C.Name=\"a\","_s, u"C.Name=\"a\"x"_s, u"C.=\"a\""_s,
          u"C.Name=\"a\",name=\"b\""_s, u"C C"_s, u"C.Name=\"a\" "_s, u"\\\\srv\\root:C"_s, u"K\u00F6.Name=\"a\""_s}) {
        EXPECT_EQ(path->SetText(text), WBEM_E_INVALID_OBJECT_PATH) << text.toStdString();
        EXPECT_EQ(TextOf(*path), u"C.Name=\"a\""_s);
    }
    EXPECT_EQ(path->SetClassName(u"a b"_s), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(path->SetKey(u"a=b"_s, 0, CimType::String, u""_s), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(path->SetKey(u"a"_s, 0, CimType::Uint32, u"1"_s), WBEM_E_INVALID_PARAMETER);
}

TEST(ObjectPath, AnObjectKnowsItsPathWhenItHasItsKeys)
{
    auto shape = std::make_shared<ClassDefinition>();
    shape->name = u"Entry"_s;
    shape->properties = {
        {u"Repo"_s, CimType::String, true}, {u"Kind"_s, CimType::Uint32, false}, {u"Path"_s, CimType::String, true}};
    WbemObject object(shape, {u"r"_s, std::uint32_t{1}, u"/a\"b"_s});
    Variant path;
    ASSERT_EQ(object.Get(u"__RelPath"_s, &path, nullptr), S_OK);
    EXPECT_EQ(path, Variant{u"Entry.Repo=\"r\",Path=\"/a\\\"b\""_s});
    object.Put(u"Path"_s, Variant{});
    ASSERT_EQ(object.Get(u"__RELPATH"_s, &path, nullptr), S_OK);
    EXPECT_TRUE(IsNullVariant(path));
    auto single = std::make_shared<ClassDefinition>();
    single->name = u"Only"_s;
    single->singleton = true;
    EXPECT_EQ(RelativePathOf(WbemObject(single)), u"Only=@"_s);
}

} // namespace quenvolta
