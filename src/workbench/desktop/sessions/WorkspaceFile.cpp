#include "workbench/desktop/sessions/WorkspaceFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "workbench/desktop/QtText.h"
#include "workbench/formats/text/JsonNesting.h"

namespace kvx::desktop {
namespace {

using Json = nlohmann::ordered_json;

constexpr char kFormat[] = "kvx-workspace";
constexpr int kVersion = 1;
constexpr qint64 kLargestFile = 16 << 20;
// A workspace that holds more of something is damaged.
constexpr std::size_t kMostLines = 1 << 17;
constexpr std::size_t kMostFiles = 64;  // of one recording
constexpr std::size_t kMostTexts = 4096;
constexpr qsizetype kMostDamage = 100;
constexpr char kEnding[] = ".kvxw";

QString TextOf(const Json& text) {
    return FromUtf8(text.get_ref<const std::string&>());
}

std::string Utf8(const QString& text) {
    return text.toStdString();
}

// A checksum keeps a damaged layout away from the toolkit.
Json LayoutLine(const QByteArray& layout) {
    return {{"layout", layout.toBase64().toStdString()}, {"check", qChecksum(layout)}};
}

// Beside the workspace or below it: both may move together.
std::string PathIn(const QDir& folder, const QString& path) {
    const QString relative = folder.relativeFilePath(path);
    const bool isNear = !relative.startsWith("..") && QDir::isRelativePath(relative);
    return Utf8(isNear ? relative : path);
}

Json TraceLine(const WorkspaceTrace& trace, const QDir& folder) {
    if (trace.files.IsEmpty()) return {{"trace", "demonstration"}};
    Json line = {{"trace", "file"},
                 {"path", PathIn(folder, trace.files.First())},
                 {"processor", trace.processor}};
    for (const QString& path : trace.files.More()) line["more"].push_back(PathIn(folder, path));
    return line;
}

Json LinesLine(const service::LineArrangement& lines) {
    Json list = Json::array();
    for (const auto& [type, number, shown] : lines) list.push_back({type, number, shown});
    return {{"lines", list}};
}

Json PositionLine(const host::OSTracePosition& position) {
    return {{"display", {position.displayStart, position.displayEnd, position.gridTime}},
            {"markers", {position.startMarker, position.endMarker, position.indicator}}};
}

// Three finite numbers, or false.
bool TakeNumbers(const Json& list, double& a, double& b, double& c) {
    if (!list.is_array() || list.size() != 3) return false;
    if (!std::ranges::all_of(list, [](const Json& each) { return each.is_number(); })) return false;
    a = list[0];
    b = list[1];
    c = list[2];
    return std::isfinite(a) && std::isfinite(b) && std::isfinite(c);
}

// Fills a workspace line by line.
class Reader {
  public:
    explicit Reader(const QString& path) : folder_(QFileInfo(path).absoluteDir()) {}

    void Take(const QByteArray& line) {
        ++number_;
        if (line.trimmed().isEmpty()) return;
        if (IsUnderstood(line)) {
            ++understood_;
        } else if (read_.damage.size() < kMostDamage) {
            read_.damage << QStringLiteral("Line %1 could not be read.").arg(number_);
        }
    }
    bool IsWorkspace() const { return isMarked_ || understood_ > 0; }
    // A newer version's file is shown as far as it is understood.
    WorkspaceRead Finish() {
        if (!isMarked_) read_.damage << "The first line does not name the format.";
        return std::move(read_);
    }

  private:
    bool IsUnderstood(const QByteArray& line) {
        if (formats::IsNestedTooDeep({line.data(), static_cast<std::size_t>(line.size())})) {
            return false;
        }
        const Json json = Json::parse(line.begin(), line.end(), nullptr, false);
        return json.is_object() && Understand(json);
    }

    bool Understand(const Json& json) {
        if (json.contains("format")) {
            isMarked_ = json["format"] == kFormat;
            return isMarked_ && json.value("version", Json()).is_number_integer();
        }
        if (json.contains("trace")) return TakeTrace(json);
        if (json.contains("lines")) return TakeLines(json["lines"]);
        if (json.contains("display")) return TakePosition(json);
        if (json.contains("layout")) return TakeLayout(json);
        return json.contains("text") && TakeText(json);
    }

    bool TakeTrace(const Json& json) {
        WorkspaceTrace trace;
        if (json["trace"] == "file") {
            const Json processor = json.value("processor", Json(0U));
            if (!processor.is_number_unsigned()) return false;
            if (processor > std::numeric_limits<std::uint32_t>::max()) return false;
            Json paths = json.value("more", Json::array());
            if (!paths.is_array() || paths.size() > kMostFiles) return false;
            paths.insert(paths.begin(), json.value("path", Json()));
            QStringList files;
            for (const Json& path : paths) {
                if (!path.is_string() || path == "") return false;
                files << QDir::cleanPath(folder_.absoluteFilePath(TextOf(path)));
            }
            trace.files = TraceFiles(files);
            trace.processor = processor;
        } else if (json["trace"] != "demonstration") {
            return false;
        }
        read_.workspace.trace = trace;
        return true;
    }

    bool TakeLines(const Json& list) {
        if (!list.is_array() || list.size() > kMostLines) return false;
        service::LineArrangement lines;
        for (const Json& line : list) {
            if (!line.is_array() || line.size() != 3 || !line[0].is_number_integer() ||
                !line[1].is_number_integer() || !line[2].is_boolean()) {
                return false;
            }
            lines.push_back({line[0], line[1], line[2]});
        }
        read_.workspace.lines = std::move(lines);
        return true;
    }

    bool TakePosition(const Json& json) {
        host::OSTracePosition position;
        if (!TakeNumbers(json["display"], position.displayStart, position.displayEnd,
                         position.gridTime) ||
            !TakeNumbers(json.value("markers", Json()), position.startMarker, position.endMarker,
                         position.indicator)) {
            return false;
        }
        read_.workspace.position = position;
        return true;
    }

    bool TakeLayout(const Json& json) {
        const Json check = json.value("check", Json());
        if (!json["layout"].is_string() || !check.is_number_unsigned()) return false;
        const auto text = json["layout"].get<std::string>();
        const QByteArray layout = QByteArray::fromBase64(QByteArray::fromStdString(text));
        if (qChecksum(layout) != check) return false;
        read_.workspace.layout = layout;
        return true;
    }

    bool TakeText(const Json& json) {
        const Json key = json.value("key", Json());
        if (!key.is_string() || !json["text"].is_string()) return false;
        if (read_.workspace.texts.size() >= kMostTexts) return false;
        read_.workspace.texts[TextOf(key)] = TextOf(json["text"]);
        return true;
    }

    QDir folder_;
    WorkspaceRead read_;
    int number_ = 0;
    int understood_ = 0;
    bool isMarked_ = false;
};

}  // namespace

Result<WorkspaceRead> ReadWorkspace(const QString& path) {
    QFile file(path);
    const auto failure = [&](const QString& why) { return Error{Utf8(path + ": " + why)}; };
    if (!file.open(QIODevice::ReadOnly)) return failure(file.errorString());
    if (file.size() > kLargestFile) return failure("too large for a workspace");
    Reader reader(path);
    for (const QByteArray& line : file.readAll().split('\n')) reader.Take(line);
    if (!reader.IsWorkspace()) return failure("this is not a workspace");
    return reader.Finish();
}

QString WriteWorkspace(const QString& path, const Workspace& workspace) {
    QSaveFile file(path);
    const auto failure = [&] { return path + ": " + file.errorString(); };
    if (!file.open(QIODevice::WriteOnly)) return failure();
    const auto write = [&](const Json& json) {
        file.write(QByteArray::fromStdString(json.dump() + "\n"));
    };
    write({{"format", kFormat}, {"version", kVersion}});
    if (workspace.trace) write(TraceLine(*workspace.trace, QFileInfo(path).absoluteDir()));
    if (!workspace.lines.empty()) write(LinesLine(workspace.lines));
    if (workspace.position) write(PositionLine(*workspace.position));
    if (!workspace.layout.isEmpty()) write(LayoutLine(workspace.layout));
    for (const auto& [key, text] : workspace.texts) {
        write({{"key", Utf8(key)}, {"text", Utf8(text)}});
    }
    return file.commit() ? QString() : failure();
}

bool IsWorkspaceName(const QString& path) {
    return path.endsWith(kEnding, Qt::CaseInsensitive);
}

}  // namespace kvx::desktop
