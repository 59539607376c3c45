#include "workbench/desktop/window/OutlinedStyle.h"

#include <QPainter>
#include <QStyleOption>

namespace kvx::desktop {
namespace {

constexpr int kOutlineAlpha = 110;
constexpr int kDarkBelow = 128;

}  // namespace

void OutlinedStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isRound = element == PE_IndicatorRadioButton;
    const bool isBox = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
    if (!isRound && !isBox) return;
    if (option->palette.color(QPalette::Base).lightness() >= kDarkBelow) return;
    QColor outline = option->palette.color(QPalette::WindowText);
    outline.setAlpha(kOutlineAlpha);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, isRound);
    painter->setPen(outline);
    painter->setBrush(Qt::NoBrush);
    const QRectF frame = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    isRound ? painter->drawEllipse(frame) : painter->drawRect(frame);
    painter->restore();
}

}  // namespace kvx::desktop
