#pragma once
// The widget of windows that paint themselves: its client area shows the surface, its edges carry
// frame and scroll bars, and its events become messages here and nowhere else.

#include <QBasicTimer>
#include <QEventLoop>
#include <QWidget>

#include "platform/qt/OwnWindow.h"

class QScrollBar;

namespace kvx::qt {

class PlainWindow final : public QWidget, public OwnWindow {
  public:
    PlainWindow(QWidget* parent, Qt::WindowFlags flags, const WindowFrame& frame,
                IWindowSink* sink);
    ~PlainWindow() override;

    // Null when the widget was not made here.
    static PlainWindow* Of(QWidget* widget);

    void SetFrame(const WindowFrame& frame);
    void SetScrollBar(int bar, const ScrollBarLook& look);
    int ScrollTrackPosition(int bar) const;
    // The window has its first size; sizes are told from now on.
    void BeginSizes() { lastClient_ = contentsRect().size(); }
    // The window that is handling a mouse event, or null.
    static PlainWindow* AtWork();
    // Whether any window is in the middle of being shown.
    static bool IsAnyPainting();
    // WM_SIZE when the client area's size is another than last time.
    void SyncSize();
    // The cursor, now or when the mouse event at work ends.
    void ShowCursor(HCURSOR cursor);

    void RunModal();
    void EndModal();

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    enum class ButtonAction : UINT { Down, Up, DoubleClick };  // in the order of the messages
    QPoint ClientOrigin() const { return contentsRect().topLeft(); }
    void SendButton(QMouseEvent* event, ButtonAction action);
    void SendNotches(int& rest, UINT message, const QWheelEvent* event);
    void TakeDrag(QDragMoveEvent* event, bool entered);
    void PaintSurface(QPainter& painter) const;
    void PaintFrame(QPainter& painter) const;
    QScrollBar* MakeScrollBar(int bar);
    void OnScrollAction(int bar, int action);
    void SendScroll(int bar, UINT code, int position);
    void LayOut();
    void ApplyCursor();
    bool HoldBack();

    WindowFrame frame_;
    QScrollBar* bars_[2] = {nullptr, nullptr};
    QSize lastClient_;
    std::shared_ptr<const Surface> shown_;
    int wheelRest_[2] = {0, 0};  // of a notch, by high-resolution wheels
    std::optional<HCURSOR> nextCursor_;
    QEventLoop* modalLoop_ = nullptr;
    QBasicTimer catchUp_;  // when another window no longer is served alone
};

}  // namespace kvx::qt
