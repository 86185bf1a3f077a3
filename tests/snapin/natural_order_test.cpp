#include "snapin/natural_order.h"

#include <QLocale>
#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

struct Entry {
    QString name;
    bool folder = false;

    bool IsFolder() const { return folder; }
    const QString& Name() const { return name; }
    const QString& Path() const { return name; }
};

QString RandomName(QRandomGenerator& random)
{
    // Few letters, so that names share beginnings; every character that a plain name may have now and then.
    constexpr QStringView kUsual = u"aAbB019.-_ ";
    QString name;
    const int length = random.bounded(1, 8);
    for (int i = 0; i < length; ++i)
        name += random.bounded(4) != 0 ? kUsual[random.bounded(static_cast<int>(kUsual.size()))]
                                       : QChar(random.bounded(0x20, 0x7F));
    return name;
}

TEST(NaturalOrderTest, PlainNamesSortAsTheCollatorSortsThem)
{
    QLocale::setDefault(QLocale(QLocale::English));
    const NaturalOrder order;
    QRandomGenerator random(7);
    std::vector<std::shared_ptr<Entry>> entries;
    for (int i = 0; i < 4000; ++i)
        entries.push_back(std::make_shared<Entry>(Entry{RandomName(random), random.bounded(3) == 0}));
    order.Sort(entries);
    for (std::size_t i = 1; i < entries.size(); ++i) {
        ASSERT_FALSE(order.IsBefore(*entries[i], *entries[i - 1]))
            << '"' << entries[i]->name.toStdString() << "\" after \"" << entries[i - 1]->name.toStdString() << '"';
    }
}

TEST(NaturalOrderTest, OneNameOfAnotherScriptChangesNoOrder)
{
    QLocale::setDefault(QLocale(QLocale::English));
    std::vector<std::shared_ptr<Entry>> entries;
    for (const QString& name : {u"file10"_s, u"\u00e4"_s, u"file9"_s, u"B"_s, u"a"_s, u"file"_s + QString(200, u'1')})
        entries.push_back(std::make_shared<Entry>(Entry{name}));
    NaturalOrder().Sort(entries);
    QStringList sorted;
    for (const auto& entry : entries)
        sorted.append(entry->name.left(6));
    EXPECT_EQ(sorted, QStringList({u"a"_s, u"\u00e4"_s, u"B"_s, u"file9"_s, u"file10"_s, u"file11"_s}));
}

} // namespace

} // namespace quenvolta::test
