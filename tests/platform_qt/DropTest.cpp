// Drags over windows: views may take them, files fall through to the window that accepts files.

#include <QDropEvent>
#include <QMainWindow>
#include <QMimeData>
#include <QUrl>

#include "platform/windows/DropTarget.h"
#include "platform/windows/View.h"
#include "platform_qt/QtFixture.h"

namespace {

using kvx::test::Log;

class Target : public CView {
  public:
    Log log;
    DROPEFFECT effect = DROPEFFECT_NONE;
    COleDropTarget target;
    void OnDraw(CDC*) override {}
    DROPEFFECT OnDragEnter(COleDataObject* data, DWORD, CPoint at) override {
        log.push_back("enter " + data->Text() + " " + std::to_string(at.x));
        return effect;
    }
    DROPEFFECT OnDragOver(COleDataObject*, DWORD keys, CPoint) override {
        log.push_back("over " + std::to_string(keys));
        return effect;
    }
    void OnDragLeave() override { log.push_back("leave"); }
    bool OnDrop(COleDataObject* data, DROPEFFECT, CPoint) override {
        log.push_back("drop " + data->Text());
        return true;
    }
};

class Frame : public CWnd {
  public:
    Log files;

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {ON_WM_DROPFILES<&Frame::OnFiles>()};
        static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
        return kMap;
    }
    void OnFiles(HDROP drop) {
        for (UINT i = 0; i < DragQueryFileCount(drop); ++i) files.push_back(DragQueryFile(drop, i));
        DragFinish(drop);
    }
};

class DropTest : public kvx::test::QtFixture {
  protected:
    void SetUp() override {
        MakeTop(frame);
        view = new Target;
        ASSERT_TRUE(view->Create(WS_CHILD | WS_VISIBLE, {50, 0, 250, 100}, &frame, 1));
        ASSERT_TRUE(view->target.Register(view));
        frame.DragAcceptFiles();
    }
    // Whether the drag was welcome at the view's point (30, 20), and the drop taken.
    std::pair<bool, bool> Drag(const QMimeData& data) const {
        const QPointF at(30, 20);
        QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(Widget(*view), &enter);
        if (!enter.isAccepted()) return {false, false};
        QDragMoveEvent move(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton,
                            Qt::ControlModifier);
        QApplication::sendEvent(Widget(*view), &move);
        QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(Widget(*view), &drop);
        return {true, drop.isAccepted()};
    }
    Frame frame;
    Target* view = nullptr;
};

TEST_F(DropTest, ViewsTakeWhatTheyWant) {
    QMimeData text;
    text.setText("hello");
    EXPECT_EQ(Drag(text), (std::pair{false, false}));
    EXPECT_EQ(view->log, (Log{"enter hello 30"}));
    view->log.clear();
    view->effect = DROPEFFECT_COPY;
    EXPECT_EQ(Drag(text), (std::pair{true, true}));
    EXPECT_EQ(view->log, (Log{"enter hello 30", "over 9", "drop hello"}));
}

TEST_F(DropTest, RefusedFilesFallThroughToTheFrame) {
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile("/tmp/a b.log"), QUrl("http://elsewhere/x")});
    EXPECT_EQ(Drag(files), (std::pair{true, true}));
    EXPECT_EQ(frame.files, (Log{"/tmp/a b.log"}));
    EXPECT_EQ(view->log.size(), 1u) << "asked once";
    view->target.Revoke();
    frame.DragAcceptFiles(false);
    EXPECT_EQ(Drag(files), (std::pair{false, false}));
}

// A host's main window that knows only the toolkit.
class HostMain : public QMainWindow {
  public:
    HostMain() { setAcceptDrops(true); }
    QStringList files;

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override { event->acceptProposedAction(); }
    void dropEvent(QDropEvent* event) override {
        for (const QUrl& url : event->mimeData()->urls()) files << url.toLocalFile();
        event->acceptProposedAction();
    }
};

TEST_F(DropTest, FilesPassedOnReachAHostThatKnowsOnlyTheToolkit) {
    HostMain host;
    const HWND main = reinterpret_cast<HWND>(static_cast<QWidget*>(&host));
    const HDROP drop = CreateDrop({"/tmp/trace.log"});
    EXPECT_EQ(SendMessage(main, WM_DROPFILES, reinterpret_cast<WPARAM>(drop), 0), 1);
    EXPECT_EQ(host.files, QStringList{"/tmp/trace.log"});
    host.setAcceptDrops(false);
    EXPECT_EQ(SendMessage(main, WM_DROPFILES, reinterpret_cast<WPARAM>(CreateDrop({"/x"})), 0), 0);
}

}  // namespace
