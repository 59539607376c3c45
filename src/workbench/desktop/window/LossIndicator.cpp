#include "workbench/desktop/window/LossIndicator.h"

#include <QMessageBox>
#include <QStyle>

#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

using service::Loss;

constexpr int kIconSide = 16;

QString Row(Loss loss, std::uint64_t count) {
    const service::LossInfo& info = service::GetLossInfo(loss);
    return QStringLiteral("<tr><td align='right'><b>%1</b></td><td><b>%2</b><br>%3</td></tr>")
        .arg(CountText(count), FromUtf8(info.name).toHtmlEscaped(),
             FromUtf8(info.help).toHtmlEscaped());
}

QString Table(const service::LossCounters& losses, bool isLoss, const QString& title) {
    QString rows;
    for (std::size_t i = 0; i < static_cast<std::size_t>(Loss::Count); ++i) {
        const auto loss = static_cast<Loss>(i);
        if (losses.Get(loss) == 0 || service::GetLossInfo(loss).isLoss != isLoss) continue;
        rows += Row(loss, losses.Get(loss));
    }
    if (rows.isEmpty()) return {};
    return QStringLiteral("<p>%1</p><table cellpadding='5'>%2</table>").arg(title, rows);
}

std::uint64_t NoteCount(const service::LossCounters& losses) {
    std::uint64_t notes = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(Loss::Count); ++i) {
        const auto loss = static_cast<Loss>(i);
        if (!service::GetLossInfo(loss).isLoss) notes += losses.Get(loss);
    }
    return notes;
}

// "1 loss", "1,234 losses".
QString Counted(std::uint64_t count, const char* one, const char* many) {
    return CountText(count) + " " + (count == 1 ? one : many);
}

}  // namespace

LossIndicator::LossIndicator() {
    setObjectName("losses");
    setAutoRaise(true);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setIconSize({kIconSide, kIconSide});
    setFocusPolicy(Qt::NoFocus);
    hide();
    connect(this, &QToolButton::clicked, this, [this] {
        QMessageBox box(window());
        box.setWindowTitle("About This Recording");
        box.setTextFormat(Qt::RichText);
        box.setText(Explanation());
        box.exec();
    });
}

void LossIndicator::Tell(const service::LossCounters& losses,
                         const std::vector<std::string>& warnings) {
    losses_ = losses;
    warnings_ = warnings;
    const std::uint64_t lost = losses.TotalLosses();
    const std::uint64_t notes = NoteCount(losses) + warnings.size();
    setVisible(lost + notes > 0);
    setText(lost > 0 ? Counted(lost, "loss", "losses") : Counted(notes, "note", "notes"));
    setIcon(style()->standardIcon(lost > 0 ? QStyle::SP_MessageBoxWarning
                                           : QStyle::SP_MessageBoxInformation));
    setToolTip(lost > 0 ? "Parts of the recording could not be shown. Click for what and why."
                        : "Nothing is missing. Click for what is worth knowing.");
}

QString LossIndicator::Explanation() const {
    QString text;
    for (const std::string& warning : warnings_) {
        text += "<p>" + FromUtf8(warning).toHtmlEscaped() + "</p>";
    }
    return text + Table(losses_, true, "Not shown, because it was lost:") +
           Table(losses_, false, "Worth knowing; nothing is missing:");
}

}  // namespace kvx::desktop
