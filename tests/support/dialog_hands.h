#pragma once

#include "support/qt_printers.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>
#include <stdexcept>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

/// What a person does with dialogs, by the names of their parts.
struct DialogHands {
    /// Opens a dialog without waiting for its end.
    static void Open(QDialog& dialog)
    {
        dialog.show();
        dialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    }
    template <typename Widget>
    static Widget& Part(QWidget& dialog, const char* name)
    {
        auto* part = dialog.findChild<Widget*>(QString::fromLatin1(name));
        if (part == nullptr)
            throw std::runtime_error(name);
        return *part;
    }
    static QPushButton& Button(QWidget& dialog, QDialogButtonBox::StandardButton which)
    {
        return *Part<QDialogButtonBox>(dialog, "buttons").button(which);
    }
    static QPushButton& Ok(QWidget& dialog) { return Button(dialog, QDialogButtonBox::Ok); }
    /// At the left, where check boxes and options of any width are hit.
    static void Click(QAbstractButton& button)
    {
        QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(10, button.height() / 2));
    }
    static void Click(QWidget& dialog, const char* button) { Click(Part<QAbstractButton>(dialog, button)); }
    /// Replaces what a field holds, key by key.
    static void Type(QWidget& dialog, const char* field, const QString& text)
    {
        auto& edit = Part<QLineEdit>(dialog, field);
        edit.selectAll();
        edit.setFocus();
        QTest::keyClick(&edit, Qt::Key_Delete);
        QTest::keyClicks(&edit, text);
    }
    static bool HasFocus(QWidget& dialog, const char* name)
    {
        return dialog.focusWidget() == &Part<QWidget>(dialog, name);
    }
    /// Does something that shows a message box; its text.
    template <typename Action>
    static QString MessageOf(Action&& action, QMessageBox::Icon icon = QMessageBox::Critical)
    {
        QString text;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr || !box->isVisible())
                return;
            EXPECT_EQ(box->windowTitle(), u"Quenvolta Server");
            EXPECT_EQ(box->icon(), icon);
            text = box->text();
            box->close();
        });
        timer.start(1);
        action();
        return text;
    }
    /// The rows of a list, those below headings indented.
    static QStringList Rows(const QAbstractItemView& list, const QModelIndex& parent = {})
    {
        QStringList rows;
        for (int row = 0; row < list.model()->rowCount(parent); ++row) {
            const QModelIndex index = list.model()->index(row, 0, parent);
            rows.append((parent.isValid() ? u"  "_s : u""_s) + index.data().toString());
            rows += Rows(list, index);
        }
        return rows;
    }
    /// Selects rows of a list by their texts, as with clicks that keep what is selected.
    static void SelectRows(QAbstractItemView& list, const QStringList& texts)
    {
        list.clearSelection();
        for (const QString& text : texts) {
            const QModelIndexList found = list.model()->match(list.model()->index(0, 0), Qt::DisplayRole, text, 1,
                                                              Qt::MatchExactly | Qt::MatchRecursive);
            ASSERT_FALSE(found.isEmpty()) << text.toStdString();
            list.scrollTo(found.first());
            QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier,
                              list.visualRect(found.first()).center());
        }
    }
    static QStringList SelectedRows(const QAbstractItemView& list)
    {
        QStringList texts;
        for (const QModelIndex& row : list.selectionModel()->selectedRows(0))
            texts.append(row.data().toString());
        texts.sort();
        return texts;
    }
};

} // namespace quenvolta::test
