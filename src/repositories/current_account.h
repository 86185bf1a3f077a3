#pragma once

#include <QString>

namespace quenvolta
{

class CModel;

/// The account that the managed computer knows the person at the console by. Both texts are empty where it knows none.
struct CurrentAccount {
    QString sid = {};
    QString shownName = {};
};

/// Asks the managed computer; failures are exceptions.
CurrentAccount FindCurrentAccount(CModel& model);

} // namespace quenvolta
