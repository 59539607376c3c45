// Frame, scroll bars, size and painting. Input: PlainWindowInput.cpp.

#include "platform/qt/PlainWindow.h"

#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QTimerEvent>
#include <algorithm>
#include <utility>

#include "platform/base/Rects.h"
#include "platform/base/SystemInfo.h"
#include "platform/qt/Convert.h"
#include "platform/qt/MessagePump.h"
#include "platform/windows/ScrollInfo.h"

namespace kvx::qt {

namespace {

constexpr int kHuge = 16777215;

int g_painting = 0;

QPoint RoundedToDevice(const QTransform& toDevice, QPoint at) {
    const QPointF position = toDevice.map(QPointF(at));
    return {static_cast<int>(PixelGrid::Round(position.x())),
            static_cast<int>(PixelGrid::Round(position.y()))};
}

void DrawEdge(QPainter& painter, QRect r, int topLeft, int bottomRight) {
    const QColor light = ToQColor(GetSysColor(topLeft));
    const QColor dark = ToQColor(GetSysColor(bottomRight));
    painter.fillRect(r.left(), r.top(), r.width(), 1, light);
    painter.fillRect(r.left(), r.top(), 1, r.height(), light);
    painter.fillRect(r.left(), r.bottom(), r.width(), 1, dark);
    painter.fillRect(r.right(), r.top(), 1, r.height(), dark);
}

}  // namespace

PlainWindow::PlainWindow(QWidget* parent, Qt::WindowFlags flags, const WindowFrame& frame,
                         IWindowSink* sink)
    : QWidget(parent, flags), OwnWindow(this, sink), frame_(frame) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setMouseTracking(true);
    setMinimumSize(0, 0);
    LayOut();
}

PlainWindow::~PlainWindow() {
    EndModal();
    Detach();
}

PlainWindow* PlainWindow::Of(QWidget* widget) {
    return dynamic_cast<PlainWindow*>(OwnWindow::Of(widget));
}

bool PlainWindow::IsAnyPainting() {
    return g_painting > 0;
}

bool PlainWindow::event(QEvent* event) {
    const EventScope scope;
    return TakeMessage(event) || QWidget::event(event);
}

void PlainWindow::SetFrame(const WindowFrame& frame) {
    const QPoint before = ClientOrigin();
    frame_ = frame;
    LayOut();
    const QPoint moved = ClientOrigin() - before;
    for (QObject* child : children())
        if (child->isWidgetType() && child != bars_[0] && child != bars_[1])
            if (auto* widget = static_cast<QWidget*>(child); !widget->isWindow())
                widget->move(widget->pos() + moved);
    update();
    SyncSize();
}

// The scroll bars lie inside the frame, at the right and at the bottom.
void PlainWindow::LayOut() {
    const int edge = frame_.Width();
    const auto thickness = [this](int bar) {
        const bool shown = bars_[bar] && !bars_[bar]->isHidden();
        return shown ? GetSystemMetrics(bar == SB_VERT ? SM_CXVSCROLL : SM_CYHSCROLL) : 0;
    };
    const int right = thickness(SB_VERT);
    const int bottom = thickness(SB_HORZ);
    setContentsMargins(edge, edge, edge + right, edge + bottom);
    const QRect inside = rect().adjusted(edge, edge, -edge, -edge);
    if (right)
        bars_[SB_VERT]->setGeometry(inside.right() + 1 - right, inside.top(), right,
                                    std::max(inside.height() - bottom, 0));
    if (bottom)
        bars_[SB_HORZ]->setGeometry(inside.left(), inside.bottom() + 1 - bottom,
                                    std::max(inside.width() - right, 0), bottom);
}

void PlainWindow::SyncSize() {
    const QSize client = contentsRect().size();
    if (client == lastClient_ || HoldBack()) return;
    lastClient_ = client;
    Send(WM_SIZE, 0, MakePointParam(client.width(), client.height()));
}

// Whether the window must wait; it then catches up later. Timers wait as well.
bool PlainWindow::HoldBack() {
    const bool held = IsHeldBack(this);
    if (held) catchUp_.start(10, this);
    return held;
}

void PlainWindow::timerEvent(QTimerEvent* event) {
    if (event->timerId() != catchUp_.timerId()) return QWidget::timerEvent(event);
    if (IsHeldBack(this)) return;
    catchUp_.stop();
    SyncSize();
    update();
}

void PlainWindow::resizeEvent(QResizeEvent*) {
    LayOut();
    SyncSize();
}

QScrollBar* PlainWindow::MakeScrollBar(int bar) {
    auto* const made = new QScrollBar(bar == SB_VERT ? Qt::Vertical : Qt::Horizontal, this);
    SetInternal(made);
    made->hide();
    made->setCursor(Qt::ArrowCursor);
    made->setContextMenuPolicy(Qt::NoContextMenu);
    made->setTracking(false);
    connect(made, &QScrollBar::actionTriggered, this,
            [this, bar](int action) { OnScrollAction(bar, action); });
    connect(made, &QScrollBar::sliderMoved, this, [this, bar](int position) {
        const EventScope scope;
        SendScroll(bar, SB_THUMBTRACK, position);
    });
    connect(made, &QScrollBar::sliderReleased, this, [this, bar] {
        const EventScope scope;
        SendScroll(bar, SB_THUMBPOSITION, bars_[bar]->sliderPosition());
        SendScroll(bar, SB_ENDSCROLL, 0);
        bars_[bar]->setSliderPosition(bars_[bar]->value());
    });
    return made;
}

void PlainWindow::SetScrollBar(int bar, const ScrollBarLook& look) {
    if (!bars_[bar] && !look.visible) return;
    if (!bars_[bar]) bars_[bar] = MakeScrollBar(bar);
    QScrollBar* const shown = bars_[bar];
    shown->setRange(look.minimum, look.maximum);
    shown->setPageStep(std::max(look.page, 1));
    shown->setValue(look.position);
    shown->setEnabled(look.enabled);
    if (shown->isHidden() == !look.visible) return;
    shown->setVisible(look.visible);
    shown->raise();
    LayOut();
    update();
    SyncSize();
}

int PlainWindow::ScrollTrackPosition(int bar) const {
    return bars_[bar] ? bars_[bar]->sliderPosition() : 0;
}

// The bar asks; only the window's handler moves it.
void PlainWindow::OnScrollAction(int bar, int action) {
    const EventScope scope;
    QScrollBar* const source = bars_[bar];
    const int wanted = source->sliderPosition();
    source->setSliderPosition(source->value());
    switch (action) {
        case QAbstractSlider::SliderSingleStepAdd:
            return SendScroll(bar, SB_LINEDOWN, 0);
        case QAbstractSlider::SliderSingleStepSub:
            return SendScroll(bar, SB_LINEUP, 0);
        case QAbstractSlider::SliderPageStepAdd:
            return SendScroll(bar, SB_PAGEDOWN, 0);
        case QAbstractSlider::SliderPageStepSub:
            return SendScroll(bar, SB_PAGEUP, 0);
        case QAbstractSlider::SliderToMinimum:
            return SendScroll(bar, SB_TOP, 0);
        case QAbstractSlider::SliderToMaximum:
            return SendScroll(bar, SB_BOTTOM, 0);
        case QAbstractSlider::SliderMove:
            if (wanted != source->value()) SendScroll(bar, SB_THUMBPOSITION, wanted);
            return;
        default:
            return;
    }
}

void PlainWindow::SendScroll(int bar, UINT code, int position) {
    Send(bar == SB_VERT ? WM_VSCROLL : WM_HSCROLL, MakeScroll(code, position));
}

void PlainWindow::paintEvent(QPaintEvent*) {
    ++g_painting;
    if (IWindowSink* sink = Sink(); sink && !HoldBack()) shown_ = sink->Picture();
    QPainter painter(this);
    if (shown_) PaintSurface(painter);
    PaintFrame(painter);
    --g_painting;
}

// A pixel of the surface is a pixel of the device, from the one that the client area's corner is
// rounded to: wherever the window begins, nothing is smoothed. A device of another ratio than the
// window's gets the picture scaled.
void PlainWindow::PaintSurface(QPainter& painter) const {
    const SIZE size = shown_->DeviceSize();
    if (size.cx <= 0 || size.cy <= 0) return;
    const QImage image(reinterpret_cast<const uchar*>(shown_->Data()), size.cx, size.cy,
                       size.cx * 4, QImage::Format_RGB32);
    const QTransform toDevice = painter.deviceTransform();
    const QPoint corner = RoundedToDevice(toDevice, contentsRect().topLeft());
    painter.save();
    if (toDevice.m11() == shown_->Grid().Ratio()) {
        painter.setTransform(toDevice.inverted());
        painter.drawImage(corner, image);
    } else {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(ToQRect(RectAt(ToPoint(contentsRect().topLeft()), shown_->Size())),
                          image);
    }
    painter.restore();
}

void PlainWindow::PaintFrame(QPainter& painter) const {
    QRect edge = rect();
    if (frame_.raised) {
        DrawEdge(painter, edge, COLOR_3DLIGHT, COLOR_3DDKSHADOW);
        DrawEdge(painter, edge.adjusted(1, 1, -1, -1), COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW);
        edge.adjust(2, 2, -2, -2);
    }
    if (frame_.border) {
        DrawEdge(painter, edge, COLOR_WINDOWFRAME, COLOR_WINDOWFRAME);
        edge.adjust(1, 1, -1, -1);
    }
    if (frame_.sunken) {
        DrawEdge(painter, edge, COLOR_BTNSHADOW, COLOR_BTNHIGHLIGHT);
        DrawEdge(painter, edge.adjusted(1, 1, -1, -1), COLOR_3DDKSHADOW, COLOR_3DLIGHT);
        edge.adjust(2, 2, -2, -2);
    }
    const QRect client = contentsRect();
    if (client.right() < edge.right() && client.bottom() < edge.bottom())
        painter.fillRect(QRect(client.bottomRight() + QPoint(1, 1), edge.bottomRight()),
                         ToQColor(GetSysColor(COLOR_3DFACE)));
}

// Windows with a sizing frame keep to the sizes that they allow.
void PlainWindow::showEvent(QShowEvent*) {
    SyncSize();
    if (!isWindow()) return;
    MINMAXINFO info;
    Send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    setMinimumSize(std::clamp(info.ptMinTrackSize.x, 0, kHuge),
                   std::clamp(info.ptMinTrackSize.y, 0, kHuge));
}

void PlainWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        Send(WM_SYSCOLORCHANGE);
    QWidget::changeEvent(event);
}

void PlainWindow::RunModal() {
    QEventLoop loop;
    modalLoop_ = &loop;
    hide();  // a visible window does not become modal
    setWindowModality(Qt::ApplicationModal);
    show();
    activateWindow();
    const QPointer<PlainWindow> guard(this);
    loop.exec();
    if (guard) guard->setWindowModality(Qt::NonModal);
}

void PlainWindow::EndModal() {
    if (QEventLoop* loop = std::exchange(modalLoop_, nullptr)) loop->quit();
}

}  // namespace kvx::qt
