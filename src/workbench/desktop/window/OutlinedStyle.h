#pragma once
// The toolkit's style, with outlines around check boxes and radio buttons that also show on dark.

#include <QProxyStyle>

namespace kvx::desktop {

class OutlinedStyle final : public QProxyStyle {
  public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

}  // namespace kvx::desktop
