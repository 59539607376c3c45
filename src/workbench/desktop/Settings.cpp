#include "workbench/desktop/Settings.h"

#include <QStandardPaths>

namespace kvx::desktop {

Settings::Settings(const QString& path)
    : file_(std::make_unique<QSettings>(path, QSettings::IniFormat)) {}

QString Settings::UserPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           "/kvxostrace/kvxostrace.ini";
}

QVariant Settings::Get(const QString& name) const {
    return file_ ? file_->value(name) : values_.value(name);
}

void Settings::Set(const QString& name, const QVariant& value) {
    if (file_) {
        file_->setValue(name, value);
    } else {
        values_[name] = value;
    }
}

}  // namespace kvx::desktop
