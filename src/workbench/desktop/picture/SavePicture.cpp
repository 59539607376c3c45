#include "workbench/desktop/picture/SavePicture.h"

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

std::optional<service::LossCounters> SavePicture(std::unique_ptr<service::TraceService> trace,
                                                 const PictureRequest& request,
                                                 const std::string& output,
                                                 const cli::Streams& streams) {
    PrepareOffscreen();
    int count = 1;
    char name[] = "kvxostrace";
    char* arguments[] = {name, nullptr};
    const QApplication application(count, arguments);
    const Result<Picture> picture = MakePicture(std::move(trace), request);
    if (!picture) {
        streams.error << "kvxostrace: " << picture.GetError().message << "\n";
        return std::nullopt;
    }
    const QString failure = Write(EncodePng(picture->image), output, streams.out);
    if (failure.isEmpty()) return picture->losses;
    streams.error << "kvxostrace: " << failure.toStdString() << "\n";
    return std::nullopt;
}

}  // namespace kvx::desktop
