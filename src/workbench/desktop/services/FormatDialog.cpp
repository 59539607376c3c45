#include "workbench/desktop/services/FormatDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>

#include "host/NamedColors.h"
#include "platform/base/Automation.h"
#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

constexpr int kSmallestPoints = 6;
constexpr int kLargestPoints = 48;
constexpr int kSwatch = 14;

QString NameOf(IQFormatViewClient2& client) {
    Bstr name;
    client.GetName(name.Receive());
    return FromBstr(name.Get());
}

class Items final : public IQFormatItemList {
  public:
    HRESULT KVX_CALL Append(BSTR item) override {
        names.append(FromBstr(item));
        return S_OK;
    }
    QStringList names;
};

// The colour of a row of the table; the desktop's own for the two system colours.
QColor ColorOf(int index, const QPalette& palette, bool background) {
    COLORREF color = 0;
    if (ColorOfIndex(index, &color)) {
        return QColor(static_cast<int>(GetRValue(color)), static_cast<int>(GetGValue(color)),
                      static_cast<int>(GetBValue(color)));
    }
    if (index == kColorHighlight) {
        return palette.color(background ? QPalette::Highlight : QPalette::HighlightedText);
    }
    return palette.color(background ? QPalette::Base : QPalette::Text);
}

QComboBox* MakeColorBox(const QPalette& palette, bool background) {
    auto* box = new QComboBox;
    for (int i = 0; IndexOfColor(NameOfColor(i)) == i; ++i) {
        QPixmap swatch(kSwatch, kSwatch);
        swatch.fill(ColorOf(i, palette, background));
        box->addItem(swatch, NameOfColor(i));
    }
    return box;
}

}  // namespace

FormatDialog::FormatDialog(std::vector<IQFormatViewClient2*> clients, Settings& settings,
                           QWidget* parent)
    : QDialog(parent),
      clients_(std::move(clients)),
      settings_(settings),
      client_(new QComboBox),
      item_(new QComboBox),
      face_(new QFontComboBox),
      points_(new QSpinBox),
      foreground_(MakeColorBox(palette(), false)),
      background_(MakeColorBox(palette(), true)),
      sample_(new QLabel("AaBbCc 0123456789")) {
    setWindowTitle("Format");
    for (IQFormatViewClient2* client : clients_) client_->addItem(NameOf(*client));
    points_->setRange(kSmallestPoints, kLargestPoints);
    points_->setSuffix(" pt");
    sample_->setAutoFillBackground(true);
    sample_->setAlignment(Qt::AlignCenter);
    sample_->setFrameShape(QFrame::StyledPanel);
    sample_->setMinimumSize(280, 64);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel |
                                         QDialogButtonBox::Apply);
    auto* form = new QFormLayout(this);
    form->addRow("&Windows:", client_);
    form->addRow("&Font:", face_);
    form->addRow("&Size:", points_);
    form->addRow("&Item:", item_);
    form->addRow("F&oreground:", foreground_);
    form->addRow("&Background:", background_);
    form->addRow(sample_);
    auto* hint = new QLabel("Windows that draw in colours of their own keep them.");
    hint->setEnabled(false);
    form->addRow(hint);
    form->addRow(buttons);

    connect(client_, &QComboBox::currentIndexChanged, this, [this] { ShowClient(); });
    connect(item_, &QComboBox::currentIndexChanged, this, [this] { ShowItem(); });
    connect(face_, &QFontComboBox::currentFontChanged, this, [this] { ShowSample(); });
    connect(points_, &QSpinBox::valueChanged, this, [this] { ShowSample(); });
    for (QComboBox* box : {foreground_, background_}) {
        connect(box, &QComboBox::currentIndexChanged, this, [this] { ShowSample(); });
    }
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        Apply();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            [this] { Apply(); });
    ShowClient();
}

IQFormatViewClient2& FormatDialog::Client() const {
    return *clients_[static_cast<std::size_t>(client_->currentIndex())];
}

QString FormatDialog::ColorSetting(const char* which) const {
    return "Format/" + client_->currentText() + "/" + item_->currentText() + "/" + which;
}

void FormatDialog::ShowClient() {
    Bstr face;
    std::int32_t points = 0;
    if (Succeeded(Client().GetFont(face.Receive(), &points))) {
        face_->setCurrentFont(QFont(FromBstr(face.Get())));
        face_->setCurrentText(FromBstr(face.Get()));
        points_->setValue(points);
    }
    shownFont_ = {face_->currentText(), points_->value()};
    Items items;
    Client().GetItemNames(&items);
    item_->clear();
    item_->addItems(items.names);
    ShowItem();
}

void FormatDialog::ShowItem() {
    const auto chosen = [this](const char* which) {
        const QVariant index = settings_.Get(ColorSetting(which));
        return index.isValid() ? index.toInt() : kColorSystem;
    };
    foreground_->setCurrentIndex(chosen("foreground"));
    background_->setCurrentIndex(chosen("background"));
    ShowSample();
}

void FormatDialog::ShowSample() {
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, ColorOf(foreground_->currentIndex(), palette(), false));
    colors.setColor(QPalette::Window, ColorOf(background_->currentIndex(), palette(), true));
    sample_->setPalette(colors);
    sample_->setFont(QFont(face_->currentText(), points_->value()));
}

void FormatDialog::Apply() {
    const std::pair font(face_->currentText(), points_->value());
    if (std::exchange(shownFont_, font) != font) {
        Client().SetFont(Bstr(font.first.toStdString()).Get(), font.second);
    }
    const int foreground = foreground_->currentIndex();
    const int background = background_->currentIndex();
    Client().SetColours(Bstr(item_->currentText().toStdString()).Get(), foreground, background);
    settings_.Set(ColorSetting("foreground"), foreground);
    settings_.Set(ColorSetting("background"), background);
}

}  // namespace kvx::desktop
