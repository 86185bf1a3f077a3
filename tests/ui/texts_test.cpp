#include "foundation/simple_exception.h"
#include "support/qt_printers.h"
#include "ui/string_table.h"

#include <gtest/gtest.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

TEST(MessageFormatTest, FillsInsertsOnce)
{
    struct Row {
        QString format;
        QList<FormatArgument> inserts;
        QString result;
    };
    const Row rows[] = {
        {u"rename '%1' to '%2'?"_s, {u"a"_s, u"b"_s}, u"rename 'a' to 'b'?"_s},
        {u"%2 before %1"_s, {u"x"_s, u"y"_s}, u"y before x"_s},
        {u"%1 %2"_s, {u"%2"_s, u"%1!d!"_s}, u"%2 %1!d!"_s}, // what an insert brings is no insert
        {u"%1!d! of %2!u!, %3!s!"_s, {std::int64_t{-3}, std::uint64_t{7}, u"z"_s}, u"-3 of 7, z"_s},
        {u"wait!%1! it's %1!"_s, {u"on"_s}, u"wait!on! it's on!"_s},
        {u"100%% of %1, 5 % off, %"_s, {u"all"_s}, u"100% of all, 5 % off, %"_s},
        {u"%3 and %0"_s, {u"only"_s}, u"%3 and %0"_s},
        {u"%11%1"_s, {u"one"_s}, u"%11one"_s},
    };
    for (const Row& row : rows)
        EXPECT_EQ(FormatMessage(row.format, row.inserts), row.result);
}

TEST(StringTableTest, HoldsTextsByNumber)
{
    EXPECT_EQ(LoadString(119), u"Quenvolta Server");
    EXPECT_EQ(LoadString(108, u"<b>ops</b>"_s), u"Are you sure you want to delete group '<b>ops</b>'?");
    EXPECT_THROW(LoadString(9999), SimpleException);
}

} // namespace quenvolta
