#include "workbench/desktop/SavePicture.h"

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QSaveFile>

namespace kvx::desktop {
namespace {

QByteArray EncodePng(const QImage& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return picture.save(&buffer, "PNG") ? bytes : QByteArray();
}

// Empty: written.
QString Write(const QByteArray& bytes, const std::string& output, std::ostream& out) {
    if (output == "-") {
        out.write(bytes.constData(), bytes.size());
        out.flush();
        return out ? QString() : QStringLiteral("standard output: cannot write");
    }
    QSaveFile file(QFile::decodeName(output.c_str()));
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit()) {
        return {};
    }
    return file.fileName() + ": " + file.errorString();
}

}  // namespace

int SavePicture(std::unique_ptr<service::Recording> recording, const PictureRequest& request,
                const std::string& output, const cli::Streams& streams) {
    PrepareOffscreen();
    int count = 1;
    char name[] = "kvxostrace";
    char* arguments[] = {name, nullptr};
    const QApplication application(count, arguments);
    const Result<QImage> picture = MakePicture(std::move(recording), request);
    if (!picture) {
        streams.error << "kvxostrace: " << picture.GetError().message << "\n";
        return cli::kExitFailed;
    }
    const QString failure = Write(EncodePng(*picture), output, streams.out);
    if (failure.isEmpty()) return cli::kExitDone;
    streams.error << "kvxostrace: " << failure.toStdString() << "\n";
    return cli::kExitFailed;
}

}  // namespace kvx::desktop
