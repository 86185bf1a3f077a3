#include "accounts/model_security_page_host.h"
#include "accounts/user_group_picker_dlg.h"
#include "accounts/windows_account_names.h"
#include "accounts/windows_computer_picker_dlg.h"
#include "accounts_test.h"
#include "foundation/com_exception.h"

#include <QComboBox>
#include <QLabel>
#include <QTreeView>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ModalDriver;
using test::Operation;

namespace
{

/// A directory with a few objects, searched by the beginning of their names.
class PickersTest : public test::AccountsTest
{
protected:
    PickersTest()
    {
        server.Handle(u"Quenvolta_Directory"_s, u"Search"_s, [this](test::MethodContext& call) {
            QList<WbemObjectPtr> found;
            for (const QStringList& each : m_objects) {
                if (call.Texts(u"Kinds"_s).contains(each[0]) && each[1].startsWith(call.Text(u"Text"_s)))
                    found.append(ToObject(each));
            }
            call.out->Put(u"Complete"_s, found.size() < 4);
            return call.out->Put(u"Objects"_s, found);
        });
        server.Handle(u"Quenvolta_Directory"_s, u"Resolve"_s, [this](test::MethodContext& call) {
            QList<WbemObjectPtr> found;
            for (const QStringList& each : m_objects) {
                if (!each[2].isEmpty() && call.Texts(u"SIDs"_s).contains(each[2]))
                    found.append(ToObject(each));
            }
            return call.out->Put(u"Objects"_s, found);
        });
    }

    WbemObjectPtr ToObject(const QStringList& each) const
    {
        const auto optional = [](const QString& text) { return text.isEmpty() ? Variant{} : Variant{text}; };
        return server.Make(u"Quenvolta_DirectoryObject"_s, {{u"Kind"_s, each[0]},
                                                            {u"Name"_s, each[1]},
                                                            {u"SID"_s, optional(each[2])},
                                                            {u"DnsHostName"_s, optional(each[3])},
                                                            {u"Domain"_s, u"SRV1"_s},
                                                            {u"FullName"_s, QString(u"Full "_s + each[1])}});
    }
    DirectoryOpener Opener()
    {
        return [this] { return model.OpenComputerDirectory(); };
    }
    static QTreeView& Found(QWidget& dialog) { return Part<QTreeView>(dialog, "found"); }
    static QString State(QWidget& dialog) { return Part<QLabel>(dialog, "state").text(); }
    static void Search(QWidget& dialog, const QString& text)
    {
        Type(dialog, "text", text);
        EXPECT_TRUE(QTest::qWaitFor([&] { return State(dialog) != u"Searching..."; }));
    }
    QList<test::RecordedCall> Searches() const { return server.CallsOf(u"Search"_s); }

    // Kind, name, identifier, network name.
    QList<QStringList> m_objects{
        {u"user"_s, u"ann"_s, u"S-1-22-1-1"_s, {}},          {u"user"_s, u"anton"_s, u"S-1-22-1-2"_s, {}},
        {u"group"_s, u"angels"_s, u"S-1-22-2-3"_s, {}},      {u"computer"_s, u"anpc$"_s, u"S-1-22-1-4"_s, {}},
        {u"host"_s, u"alpha"_s, {}, u"alpha.example.org"_s}, {u"host"_s, u"beta"_s, {}, {}}};
};

TEST_F(PickersTest, SeveralAccountsArePickedBySearchesWhileTyping)
{
    CUserGroupPickerDlg picker(nullptr, Opener(), CUserGroupPickerDlg::Computers::With);
    const ModalDriver driver([&](QWidget& modal) {
        EXPECT_EQ(State(modal), u"Type a part of the name.");
        EXPECT_TRUE(HasFocus(modal, "text"));
        EXPECT_FALSE(Ok(modal).isEnabled());
        Search(modal, u"an"_s);
        EXPECT_EQ(Searches().size(), 1);                                                 // not one for each key
        EXPECT_EQ(Rows(Found(modal)), (QStringList{u"ann"_s, u"anton"_s, u"angels"_s})); // the default filter
        EXPECT_EQ(State(modal), u"Found: 3");
        SelectRows(Found(modal), {u"anton"_s, u"angels"_s});
        Click(modal, "add");
        auto& scope = Part<QComboBox>(modal, "scope");
        scope.setCurrentIndex(1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return State(modal).startsWith(u"The first 4 are shown"_s); }));
        Search(modal, u"anpc"_s); // the only one is chosen by Return
        EXPECT_TRUE(Ok(modal).isEnabled());
        Search(modal, u"ann"_s);
        Click(modal, "add");
        Part<QTreeView>(modal, "chosen").setCurrentIndex(Part<QTreeView>(modal, "chosen").model()->index(1, 0));
        Click(modal, "remove");
        Search(modal, u"anpc"_s);
        QTest::keyClick(&Part<QLineEdit>(modal, "text"), Qt::Key_Return);
    });
    EXPECT_TRUE(picker.Show());
    EXPECT_EQ(picker.Sids(), (QStringList{u"S-1-22-1-2"_s, u"S-1-22-1-1"_s, u"S-1-22-1-4"_s}));
    EXPECT_EQ(server.CallsOf(Operation::EnumerateInstances).size(), 0);
}

TEST_F(PickersTest, ASlowSearchLeavesTheWindowAliveAndTheLastTextCounts)
{
    CUserGroupPickerDlg picker(nullptr, Opener(), CUserGroupPickerDlg::Computers::Without);
    server.holdAsyncCalls = true;
    const ModalDriver driver([&](QWidget& modal) {
        EXPECT_FALSE(Part<QWidget>(modal, "scopeRow").isVisible());
        Type(modal, "text", u"ann"_s);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Searches().size() == 1; }));
        EXPECT_EQ(State(modal), u"Searching...");
        Type(modal, "text", u"ange"_s);
        server.PendingCalls().constLast()->Complete();
        EXPECT_TRUE(QTest::qWaitFor([&] { return Searches().size() == 2; }));
        EXPECT_EQ(Rows(Found(modal)), QStringList()); // what was found for the former text isn't shown
        server.PendingCalls().constLast()->Fail({WBEM_E_ACCESS_DENIED});
        EXPECT_EQ(
            MessageOf([&] { EXPECT_TRUE(QTest::qWaitFor([&] { return State(modal) == u"The search failed."; })); }),
            u"WMI access denied.");
        server.holdAsyncCalls = false;
        Search(modal, u"angel"_s);
        EXPECT_EQ(Rows(Found(modal)), QStringList{u"angels"_s});
        Click(Button(modal, QDialogButtonBox::Cancel));
    });
    EXPECT_FALSE(picker.Show());
    EXPECT_TRUE(picker.Sids().isEmpty());

    CUserGroupPickerDlg unreachable(nullptr, Opener(), CUserGroupPickerDlg::Computers::Without);
    server.Fail(Operation::Connect, QString(), {WBEM_E_ACCESS_DENIED}, -1);
    try {
        unreachable.Show();
        FAIL();
    } catch (const ComException& failure) {
        EXPECT_TRUE(failure.GetMessage().startsWith(u"Cannot create DsObjectPicker:\n"_s));
        EXPECT_EQ(failure.Code(), WBEM_E_ACCESS_DENIED);
    }
}

TEST_F(PickersTest, AComputerIsPickedByItsNetworkNameOrItsPlainOne)
{
    const auto pick = [this](CComputerPickerDlg& picker, const QString& name) {
        const ModalDriver driver([&](QWidget& modal) {
            EXPECT_FALSE(Part<QWidget>(modal, "chosenPart").isVisible());
            Search(modal, name);
            const QPoint first = Found(modal).visualRect(Found(modal).model()->index(0, 0)).center();
            QTest::mouseClick(Found(modal).viewport(), Qt::LeftButton, {}, first);
            QTest::mouseDClick(Found(modal).viewport(), Qt::LeftButton, {}, first);
        });
        EXPECT_TRUE(picker.Show());
        return picker.ComputerName();
    };
    CWindowsComputerPickerDlg named(nullptr, Opener());
    EXPECT_EQ(pick(named, u"al"_s), u"alpha.example.org");
    CWindowsComputerPickerDlg plain(nullptr, Opener());
    EXPECT_EQ(pick(plain, u"be"_s), u"beta");
    CComputerPickerDlg computer(nullptr, Opener());
    EXPECT_EQ(pick(computer, u"al"_s), u"alpha");
}

TEST_F(PickersTest, WindowsAccountsAreShownByTheNamesThatTheirComputerKnows)
{
    const QStringList sids{u"S-1-22-2-3"_s, u"S-1-5-21-9"_s, u"S-1-22-1-1"_s};
    EXPECT_EQ(WindowsAccountNames(model, sids), (QStringList{u"SRV1\\angels"_s, u"S-1-5-21-9"_s, u"SRV1\\ann"_s}));
    EXPECT_EQ(server.CallsOf(u"Resolve"_s).size(), 1);
    server.Fail(Operation::ExecMethod, u"Resolve"_s, {WBEM_E_ACCESS_DENIED});
    EXPECT_EQ(WindowsAccountNames(model, sids), sids);
    EXPECT_TRUE(WindowsAccountNames(model, {}).isEmpty());
}

} // namespace

} // namespace quenvolta
