#include "foundation/simple_exception.h"
#include "support/modal_driver.h"
#include "support/qt_printers.h"
#include "ui/base_property_page.h"
#include "ui/property_sheet.h"

#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

/// A page that writes what it is asked to do into a log.
class LoggingPage final : public CBasePropertyPageImpl
{
public:
    LoggingPage(const QString& name, QStringList& log)
        : m_log(log)
    {
        setWindowTitle(name);
    }

    void OnCreatePage() override { Log(u"create"_s, failingCreations); }
    void OnApply() override { Log(u"apply"_s, failingApplies); }
    void Change() { SetModified(); }

    int failingCreations = 0;
    int failingApplies = 0;

private:
    void Log(const QString& what, int& failures)
    {
        m_log.append(what + u' ' + windowTitle());
        if (failures-- > 0)
            throw SimpleException(u"%s failed", what);
    }

    QStringList& m_log;
};

class PropertySheetTest : public testing::Test
{
protected:
    PropertySheetTest()
    {
        for (LoggingPage** page : {&first, &second}) {
            auto made = std::make_unique<LoggingPage>(page == &first ? u"first"_s : u"second"_s, log);
            *page = made.get();
            sheet.AddPage(std::move(made));
        }
    }

    void Open()
    {
        sheet.show();
        QCoreApplication::processEvents();
    }
    QPushButton& Button(QDialogButtonBox::StandardButton which)
    {
        return *sheet.findChild<QDialogButtonBox*>()->button(which);
    }
    void Press(QDialogButtonBox::StandardButton which) { QTest::mouseClick(&Button(which), Qt::LeftButton); }
    /// Runs something that must show the failure.
    template <typename Action>
    void ExpectFailure(const QString& text, Action&& action)
    {
        const test::ModalDriver driver([&](QWidget& modal) {
            EXPECT_EQ(dynamic_cast<QMessageBox&>(modal).text(), text);
            modal.close();
        });
        action();
        EXPECT_TRUE(driver.seen);
    }

    QStringList log;
    LoggingPage* first = nullptr;
    LoggingPage* second = nullptr;
    CPropertySheet sheet{nullptr, u"Properties for /svn/r"_s};
};

} // namespace

TEST_F(PropertySheetTest, ChangedPagesAreAppliedInTheirOrderAndApplyFollowsTheChanges)
{
    Open();
    EXPECT_EQ(sheet.windowTitle(), u"Properties for /svn/r");
    EXPECT_EQ(log, QStringList{u"create first"_s});
    EXPECT_FALSE(Button(QDialogButtonBox::Apply).isEnabled());
    sheet.SetActivePage(1);
    second->Change();
    EXPECT_TRUE(Button(QDialogButtonBox::Apply).isEnabled());
    first->Change();
    Press(QDialogButtonBox::Apply);
    EXPECT_EQ(log.mid(1), (QStringList{u"create second"_s, u"apply first"_s, u"apply second"_s}));
    EXPECT_FALSE(Button(QDialogButtonBox::Apply).isEnabled());
    sheet.SetActivePage(0);
    second->Change();
    Press(QDialogButtonBox::Ok);
    EXPECT_EQ(log.mid(4), QStringList{u"apply second"_s}); // neither read again nor written unchanged
    EXPECT_EQ(sheet.result(), QDialog::Accepted);
    EXPECT_FALSE(sheet.isVisible());
}

TEST_F(PropertySheetTest, APageThatFailsIsShownStaysModifiedAndIsTriedAgain)
{
    Open();
    first->Change();
    second->failingApplies = 1;
    second->Change();
    ExpectFailure(u"apply failed"_s, [this] { Press(QDialogButtonBox::Ok); });
    EXPECT_TRUE(sheet.isVisible());
    EXPECT_EQ(sheet.findChild<QTabWidget*>()->currentIndex(), 1);
    EXPECT_FALSE(first->IsModified());
    EXPECT_TRUE(second->IsModified());
    EXPECT_TRUE(Button(QDialogButtonBox::Apply).isEnabled());
    log.clear();
    Press(QDialogButtonBox::Ok);
    EXPECT_EQ(log, QStringList{u"apply second"_s});
    EXPECT_FALSE(sheet.isVisible());
}

TEST_F(PropertySheetTest, APageThatCannotBeReadIsDisabledAndReadWhenItIsShownAgain)
{
    first->failingCreations = 1;
    ExpectFailure(u"create failed"_s, [this] {
        sheet.show();
        QCoreApplication::processEvents();
    });
    EXPECT_FALSE(first->isEnabled());
    sheet.SetActivePage(1);
    EXPECT_TRUE(second->isEnabled());
    sheet.SetActivePage(0);
    EXPECT_TRUE(first->isEnabled());
    EXPECT_EQ(log, (QStringList{u"create first"_s, u"create second"_s, u"create first"_s}));
    second->Change();
    Press(QDialogButtonBox::Cancel);
    EXPECT_EQ(log.size(), 3);
}

} // namespace quenvolta
