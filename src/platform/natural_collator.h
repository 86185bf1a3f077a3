#pragma once

#include <QCollator>

namespace quenvolta
{

/// Compares texts as people sort them: by the locale, runs of digits as numbers, letters without regard to case.
QCollator NaturalCollator();

} // namespace quenvolta
