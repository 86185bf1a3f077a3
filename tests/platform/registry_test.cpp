#include "platform/registry/registry.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr auto kKey = u"Software\\Test";

class RegistryTest : public ::testing::Test
{
protected:
    QString File() const { return folder.filePath(u"sub/registry.db"_s); }

    QTemporaryDir folder;
    QString key = QString::fromUtf16(kKey);
};

TEST_F(RegistryTest, ReadingCreatesNothing)
{
    Registry registry(u"HKEY_TEST"_s, File());
    RegistryValue value;
    EXPECT_EQ(registry.QueryValue(key, u"a"_s, &value), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(registry.SetValue(key, u"a"_s, RegistryValue::FromDword(1)), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(registry.FindKey(key), ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(QFile::exists(File()));
}

TEST_F(RegistryTest, ValuesOfEveryTypeComeBackFromTheFile)
{
    const QString text = u"a\u00e4\U0001F600 'quoted'; DROP TABLE"_s;
    {
        Registry registry(u"HKEY_TEST"_s, File());
        ASSERT_EQ(registry.CreateKey(key), ERROR_SUCCESS);
        EXPECT_EQ(registry.SetValue(key, u"Text"_s, RegistryValue::FromString(text)), ERROR_SUCCESS);
        EXPECT_EQ(registry.SetValue(key, u"List"_s, RegistryValue::FromStringList({u"x"_s, text})), ERROR_SUCCESS);
        EXPECT_EQ(registry.SetValue(key, u"Small"_s, RegistryValue::FromDword(0xFFFFFFFF)), ERROR_SUCCESS);
        EXPECT_EQ(registry.SetValue(key, u"Large"_s, RegistryValue::FromQword(~0ULL)), ERROR_SUCCESS);
        EXPECT_EQ(registry.SetValue(key, u"Raw"_s, {RegistryType::Binary, QByteArray("\0\1", 2)}), ERROR_SUCCESS);
        EXPECT_EQ(registry.SetValue(key, u"Empty"_s, RegistryValue::FromStringList({})), ERROR_SUCCESS);
    }
    Registry registry(u"HKEY_TEST"_s, File());
    RegistryValue value;
    ASSERT_EQ(registry.QueryValue(u"SOFTWARE\\TEST"_s, u"tExT"_s, &value), ERROR_SUCCESS);
    EXPECT_EQ(value.ToString(), text);
    EXPECT_FALSE(value.ToDword());
    registry.QueryValue(key, u"List"_s, &value);
    EXPECT_EQ(value.ToStringList(), QStringList({u"x"_s, text}));
    registry.QueryValue(key, u"Small"_s, &value);
    EXPECT_EQ(value.ToDword(), 0xFFFFFFFFU);
    registry.QueryValue(key, u"Large"_s, &value);
    EXPECT_EQ(value.ToQword(), ~0ULL);
    registry.QueryValue(key, u"Raw"_s, &value);
    EXPECT_EQ(value.data, QByteArray("\0\1", 2));
    registry.QueryValue(key, u"Empty"_s, &value);
    EXPECT_EQ(value.ToStringList(), QStringList());
    // A number whose data isn't that long is no number.
    EXPECT_FALSE((RegistryValue{RegistryType::Dword, "abc"}).ToDword());
}

TEST_F(RegistryTest, ANameIsOneValueHoweverItIsSpelled)
{
    Registry registry(u"HKEY_TEST"_s, File());
    ASSERT_EQ(registry.CreateKey(key), ERROR_SUCCESS);
    ASSERT_EQ(registry.CreateKey(key.toUpper()), ERROR_SUCCESS);
    registry.SetValue(key, u"Srv1"_s, RegistryValue::FromDword(1));
    registry.SetValue(key, u"SRV1"_s, RegistryValue::FromDword(2));
    QList<NamedRegistryValue> all;
    ASSERT_EQ(registry.EnumerateValues(key, &all), ERROR_SUCCESS);
    ASSERT_EQ(all.size(), 1);
    EXPECT_EQ(all[0].name, u"Srv1"_s);
    EXPECT_EQ(all[0].value.ToDword(), 2U);
    EXPECT_EQ(registry.DeleteValue(key, u"sRV1"_s), ERROR_SUCCESS);
    EXPECT_EQ(registry.DeleteValue(key, u"sRV1"_s), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryTest, TwoProcessesMayWriteOneFile)
{
    Registry first(u"HKEY_TEST"_s, File());
    Registry second(u"HKEY_TEST"_s, File());
    ASSERT_EQ(first.CreateKey(key), ERROR_SUCCESS);
    for (std::uint32_t i = 0; i < 20; ++i) {
        Registry& writer = i % 2 ? first : second;
        Registry& reader = i % 2 ? second : first;
        ASSERT_EQ(writer.SetValue(key, QString::number(i), RegistryValue::FromDword(i)), ERROR_SUCCESS);
        RegistryValue value;
        ASSERT_EQ(reader.QueryValue(key, QString::number(i), &value), ERROR_SUCCESS);
        EXPECT_EQ(value.ToDword(), i);
    }
}

TEST_F(RegistryTest, ChangesAreMadeTogetherOrNotAtAll)
{
    Registry registry(u"HKEY_TEST"_s, File());
    ASSERT_EQ(registry.BeginChanges(), ERROR_SUCCESS);
    registry.CreateKey(key);
    registry.SetValue(key, u"a"_s, RegistryValue::FromDword(1));
    registry.RollBackChanges();
    EXPECT_EQ(registry.FindKey(key), ERROR_FILE_NOT_FOUND);
    ASSERT_EQ(registry.BeginChanges(), ERROR_SUCCESS);
    registry.CreateKey(key);
    Registry other(u"HKEY_TEST"_s, File());
    EXPECT_EQ(other.FindKey(key), ERROR_FILE_NOT_FOUND);
    ASSERT_EQ(registry.CommitChanges(), ERROR_SUCCESS);
    EXPECT_EQ(other.FindKey(key), ERROR_SUCCESS);
}

TEST_F(RegistryTest, ABrokenFileIsReportedAndLeftAlone)
{
    const QString path = folder.filePath(u"registry.db"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QByteArray noise(5000, 'x');
    file.write(noise);
    file.close();
    Registry registry(u"HKEY_TEST"_s, path);
    EXPECT_EQ(registry.CreateKey(key), ERROR_REGISTRY_CORRUPT);
    RegistryValue value;
    EXPECT_EQ(registry.QueryValue(key, u"a"_s, &value), ERROR_REGISTRY_CORRUPT);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), noise);
}

} // namespace

} // namespace quenvolta
