// One application object for all tests of this program, on the offscreen platform, and settings
// that are nobody's.

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <memory>

namespace {

class QtEnvironment final : public testing::Environment {
  public:
    void SetUp() override {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("XDG_CONFIG_HOME", folder_.path().toLocal8Bit());
        application_ = std::make_unique<QApplication>(count_, arguments_);
    }
    void TearDown() override { application_.reset(); }

  private:
    QTemporaryDir folder_;
    int count_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QApplication> application_;
};

[[maybe_unused]] testing::Environment* const kEnvironment =
    testing::AddGlobalTestEnvironment(new QtEnvironment);

}  // namespace
