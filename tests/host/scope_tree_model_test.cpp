#include "host/image_list_adapter.h"
#include "host/result_list_model.h"
#include "host/scope_tree_model.h"
#include "support/qt_printers.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

/// A snap-in's object that is only its name.
struct Named : ISnapInItem {
    explicit Named(QString text)
        : name(std::move(text))
    {
    }
    QString name;
};

class ScopeTreeModelTest : public testing::Test
{
protected:
    HSCOPEITEM Insert(const QString& name, HSCOPEITEM relative, std::uint32_t where = SDI_PARENT)
    {
        items.push_back(std::make_unique<Named>(name));
        SCOPEDATAITEM item;
        item.mask = SDI_STR | SDI_PARAM | where;
        item.lParam = items.back().get();
        item.relativeID = relative;
        return Succeeded(tree.Insert(&item)) ? item.ID : 0;
    }

    QStringList Names(HSCOPEITEM parent) const
    {
        QStringList names;
        for (const auto& child : tree.Find(parent)->children)
            names.append(tree.NameOf(*child));
        return names;
    }

    std::vector<std::unique_ptr<Named>> items;
    ImageListAdapter images;
    ScopeTreeModel tree{images,
                        [](MMC_COOKIE cookie) { return cookie ? static_cast<Named*>(cookie)->name : u"root"_s; }};
    ResultListModel list{tree, images,
                         [](const RESULTDATAITEM& item) { return static_cast<Named*>(item.lParam)->name; }};
    QAbstractItemModelTester treeTester{&tree, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QAbstractItemModelTester listTester{&list, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(ScopeTreeModelTest, ABatchReachesTheViewsAtOnce)
{
    const HSCOPEITEM root = tree.InsertRoot();
    list.Show(tree.Find(root));
    list.InsertColumn(0, u"Name"_s);
    const QSignalSpy inTree(&tree, &QAbstractItemModel::rowsInserted);
    const QSignalSpy inList(&list, &QAbstractItemModel::rowsInserted);
    tree.BeginBatch();
    for (int i = 0; i < 20000; ++i)
        Insert(QString::number(i), root);
    EXPECT_EQ(inTree.size(), 0);
    tree.EndBatch();
    EXPECT_EQ(inTree.size(), 1);
    EXPECT_EQ(inList.size(), 1);
    EXPECT_EQ(list.rowCount(), 20000);
    EXPECT_EQ(list.index(19999, 0).data().toString(), u"19999");

    const QSignalSpy removed(&tree, &QAbstractItemModel::rowsRemoved);
    tree.Remove(*tree.Find(root), false);
    EXPECT_EQ(removed.size(), 1);
    EXPECT_EQ(list.rowCount(), 0);
}

TEST_F(ScopeTreeModelTest, InsertsWhereItIsTold)
{
    const HSCOPEITEM root = tree.InsertRoot();
    tree.BeginBatch();
    const HSCOPEITEM b = Insert(u"b"_s, root);
    const HSCOPEITEM d = Insert(u"d"_s, root);
    Insert(u"below b"_s, b); // of which the views know nothing yet
    Insert(u"a"_s, b, SDI_NEXT);
    Insert(u"c"_s, b, SDI_PREVIOUS);
    Insert(u"e"_s, d, SDI_PREVIOUS);
    tree.EndBatch();
    EXPECT_EQ(Names(root), (QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s}));
    EXPECT_EQ(Names(b), QStringList{u"below b"_s});

    tree.Remove(*tree.Find(b), true);
    EXPECT_EQ(Names(root), (QStringList{u"a"_s, u"c"_s, u"d"_s, u"e"_s}));
    EXPECT_EQ(tree.Find(b), nullptr);
    EXPECT_EQ(Insert(u"lost"_s, b), 0);
    EXPECT_EQ(Insert(u"beside the root"_s, root, SDI_NEXT), 0);
    SCOPEDATAITEM gone;
    gone.ID = b;
    EXPECT_EQ(tree.Change(gone), E_INVALIDARG);
}

TEST_F(ScopeTreeModelTest, TheListFollowsTheTree)
{
    const HSCOPEITEM root = tree.InsertRoot();
    const HSCOPEITEM shown = Insert(u"shown"_s, root);
    const HSCOPEITEM other = Insert(u"other"_s, root);
    const HSCOPEITEM first = Insert(u"first"_s, shown);
    list.Show(tree.Find(shown));
    list.InsertColumn(0, u"Name"_s);
    Named user(u"user"_s);
    RESULTDATAITEM item;
    item.lParam = &user;
    list.Insert(&item);
    list.Flush();
    Insert(u"elsewhere"_s, other);
    const HSCOPEITEM second = Insert(u"second"_s, shown);
    EXPECT_EQ(list.rowCount(), 3);
    EXPECT_EQ(list.ScopeEntryAt(1)->id, second);
    EXPECT_EQ(list.index(2, 0).data().toString(), u"user");
    EXPECT_EQ(list.CookieOf(item.itemID), &user);
    EXPECT_EQ(list.CookieOf(item.itemID + 1), nullptr);

    const QSignalSpy changed(&list, &QAbstractItemModel::dataChanged);
    SCOPEDATAITEM change;
    change.mask = SDI_STR;
    change.ID = second;
    tree.Change(change);
    EXPECT_EQ(changed.size(), 1);
    tree.Remove(*tree.Find(first), true);
    list.Clear();
    EXPECT_EQ(list.rowCount(), 1);
}

} // namespace quenvolta
