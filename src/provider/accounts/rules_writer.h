#pragma once

#include "provider/accounts/access_rules.h"
#include "provider/accounts/rules_file.h"

namespace quenvolta
{

/// Writes the permissions so that Subversion's authorization gives exactly what AccessRules::Evaluate does, to
/// everybody who signed in. How, and why not line by line, is told in docs/permissions.md.
RulesFile WriteRules(const AccessRules& rules);

} // namespace quenvolta
