#pragma once

#include "foundation/com_exception.h"
#include "support/qt_printers.h"

#include <gtest/gtest.h>

namespace quenvolta::test
{

/// Runs something that must fail with the kind of exception, and hands the exception out.
template <typename Kind, typename Action>
std::unique_ptr<Kind> FailureOf(const Action& action)
{
    try {
        action();
    } catch (const Kind& failure) {
        return std::make_unique<Kind>(failure);
    } catch (const Exception& failure) {
        ADD_FAILURE() << "another kind of failure: " << failure.GetMessage().toStdString();
        return nullptr;
    }
    ADD_FAILURE() << "no failure";
    return nullptr;
}

/// Expects a ComException of the code.
template <typename Action>
void ExpectCode(HRESULT code, const Action& action)
{
    if (const auto failure = FailureOf<ComException>(action)) {
        EXPECT_EQ(failure->Code(), code) << failure->GetMessage().toStdString();
    }
}

/// Expects a failure of the kind with the text.
template <typename Kind, typename Action>
void ExpectMessage(const QString& message, const Action& action)
{
    if (const auto failure = FailureOf<Kind>(action)) {
        EXPECT_EQ(failure->GetMessage(), message);
    }
}

} // namespace quenvolta::test
