#include "workbench/desktop/services/LoadedModule.h"

#include <dlfcn.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace kvx::desktop {
namespace {

QString FileName(const char* name) {
    return QStringLiteral("lib%1.so").arg(name);
}

}  // namespace

LoadedModule LoadModule(const QString& directory, const char* name) {
    const QString path = QDir(directory).absoluteFilePath(FileName(name));
    void* handle = dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_LOCAL);
    if (handle) return {handle, {}};
    return {nullptr, QString::fromLocal8Bit(dlerror())};
}

void* FindSymbol(void* module, const char* name) {
    return module ? dlsym(module, name) : nullptr;
}

QString ModuleDirectory() {
    const QDir program(QCoreApplication::applicationDirPath());
    if (program.exists(FileName("KvxOSTrace"))) return program.absolutePath();
    return QDir::cleanPath(program.absoluteFilePath("../lib/kvxostrace"));
}

}  // namespace kvx::desktop
