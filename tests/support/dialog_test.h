#pragma once

#include "model/model.h"
#include "support/dialog_hands.h"
#include "support/memory_preferences.h"
#include "support/modal_driver.h"
#include "support/qt_printers.h"
#include "support/stand_in_server.h"

#include <gtest/gtest.h>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

/// A model on a stand-in server, and hands for dialogs.
class DialogTest : public testing::Test, protected DialogHands
{
protected:
    explicit DialogTest(const QString& version = QStringLiteral("3.3.1"))
        : server(version)
    {
    }

    /// The calls of methods so far, each with its target.
    QStringList MethodCalls() const
    {
        QStringList calls;
        for (const RecordedCall& call : server.Calls()) {
            if (call.operation == Operation::ExecMethod)
                calls.append(call.path + u'.' + call.method);
        }
        return calls;
    }

    StandInServer server;
    MemoryPreferences preferences;
    CModel model{server.LocatorFactory(), preferences};
};

inline void PrintTo(const StandInPermission& permission, std::ostream* stream)
{
    *stream << permission.name.toStdString() << '=' << permission.level;
}

} // namespace quenvolta::test
