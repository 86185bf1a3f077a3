#include "dashboard/dashboard_renderer.h"

#include <QFontInfo>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kMiddleLightness = 128;

QColor Mix(const QColor& some, const QColor& other, double share)
{
    const auto part = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {part(some.red(), other.red()), part(some.green(), other.green()), part(some.blue(), other.blue())};
}

} // namespace

void ApplyTheme(CDashboardDocument& document, const QPalette& palette, const QFont& font)
{
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    const bool isDark = base.lightness() < kMiddleLightness;
    const auto set = [&](const QString& variable, const QColor& color) { document.SetStyle(variable, color.name()); };
    set(u"--base"_s, base);
    set(u"--text"_s, text);
    set(u"--faint"_s, Mix(text, base, 0.35));
    set(u"--card"_s, Mix(base, text, isDark ? 0.05 : 0.02));
    set(u"--border"_s, Mix(base, text, 0.14));
    set(u"--link"_s, palette.color(QPalette::Active, QPalette::Link));
    set(u"--focus"_s, palette.color(QPalette::Active, QPalette::Highlight));
    set(u"--good"_s, isDark ? QColor(0x5f, 0xb8, 0x78) : QColor(0x2f, 0x8f, 0x4e));
    set(u"--warning"_s, isDark ? QColor(0xe0, 0xb1, 0x4c) : QColor(0xc7, 0x87, 0x0c));
    set(u"--bad"_s, isDark ? QColor(0xe0, 0x77, 0x70) : QColor(0xb9, 0x3a, 0x32));
    document.SetStyle(u"color-scheme"_s, isDark ? u"dark"_s : u"light"_s);
    document.SetStyle(u"--font"_s, u'"' + QString(font.family()).remove(u'"').remove(u'\\') + u'"');
    document.SetStyle(u"--size"_s, u"%1px"_s.arg(QFontInfo(font).pixelSize()));
}

} // namespace quenvolta
