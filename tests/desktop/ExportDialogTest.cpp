#include "workbench/desktop/exports/ExportDialog.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "TestRecording.h"

namespace kvx::desktop {
namespace {

std::shared_ptr<const service::DecodedRecording> Decoded() {
    auto decoded = std::make_shared<service::DecodedRecording>(
        std::make_unique<test::TestRecording>(std::vector{0u}, 400));
    decoded->WaitForAll();
    return decoded;
}

QByteArray Content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(ExportDialog, OffersTheMarkedRange) {
    const auto decoded = Decoded();
    ExportDialog marked(*decoded, std::pair<std::int64_t, std::int64_t>{150, 250}, nullptr);
    EXPECT_EQ(marked.Request().start, 150);
    EXPECT_EQ(marked.Request().end, 250);
    ASSERT_NE(marked.findChild<QComboBox*>(), nullptr);
    EXPECT_EQ(marked.findChild<QComboBox*>()->count(), 4);
    ExportDialog whole(*decoded, std::nullopt, nullptr);
    EXPECT_LE(whole.Request().start, 100);
    EXPECT_GE(whole.Request().end, 390);
}

TEST(ExportDialog, WritesOrSaysWhyNot) {
    const auto decoded = Decoded();
    const QTemporaryDir folder;
    for (const exports::Exporter* const form : exports::Exporters()) {
        const QString path = folder.filePath(QString("a.") + form->extension);
        EXPECT_EQ(WriteExport(decoded, *form, exports::WholeOf(*decoded), path, nullptr), "");
        EXPECT_GT(Content(path).size(), 100) << form->name;
    }
    const QString nowhere = folder.filePath("no/such/folder.csv");
    EXPECT_TRUE(WriteExport(decoded, exports::kCsv, exports::WholeOf(*decoded), nowhere, nullptr)
                    .contains("folder.csv"));
}

}  // namespace
}  // namespace kvx::desktop
