#include "workbench/desktop/LossIndicator.h"

#include <QLocale>
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
        .arg(QLocale().toString(static_cast<qulonglong>(count)),
             FromUtf8(info.name).toHtmlEscaped(), FromUtf8(info.help).toHtmlEscaped());
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
        box.setWindowTitle("Losses and Notes");
        box.setTextFormat(Qt::RichText);
        box.setText(Explain(losses_));
        box.exec();
    });
}

void LossIndicator::SetLosses(const service::LossCounters& losses) {
    losses_ = losses;
    const std::uint64_t lost = losses.TotalLosses();
    const std::uint64_t notes = NoteCount(losses);
    setVisible(lost + notes > 0);
    if (lost + notes == 0) return;
    const QString count = QLocale().toString(static_cast<qulonglong>(lost > 0 ? lost : notes));
    setText(lost > 0 ? count + (lost == 1 ? " loss" : " losses")
                     : count + (notes == 1 ? " note" : " notes"));
    setIcon(style()->standardIcon(lost > 0 ? QStyle::SP_MessageBoxWarning
                                           : QStyle::SP_MessageBoxInformation));
    setToolTip(lost > 0 ? "Parts of the recording could not be shown. Click for what and why."
                        : "Nothing is missing. Click for what is worth knowing.");
}

QString LossIndicator::Explain(const service::LossCounters& losses) {
    return Table(losses, true, "Not shown, because the recording lost it:") +
           Table(losses, false, "Worth knowing; nothing is missing:");
}

}  // namespace kvx::desktop
