#pragma once

#include "support/dialog_test.h"

namespace quenvolta::test
{

/// What the tests of accounts' dialogs begin with.
class AccountsTest : public DialogTest
{
protected:
    using DialogTest::DialogTest;
};

} // namespace quenvolta::test
