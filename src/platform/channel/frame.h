#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace quenvolta
{

/// The bytes as one frame, their length before them; empty when they are longer than a frame may be.
QByteArray MakeFrame(QByteArrayView bytes);

} // namespace quenvolta
