#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace quenvolta
{

/// The parts one after another as one frame, its length before them; empty when they are longer than a frame may be.
QByteArray MakeFrame(QByteArrayView first, QByteArrayView second = {});

} // namespace quenvolta
