#pragma once
// The files of one recording: one, or of formats that are recorded so one a processor.

#include <QStringList>

namespace kvx::desktop {

class TraceFiles {
  public:
    TraceFiles() = default;
    TraceFiles(const QString& path) : paths_(path) {}
    explicit TraceFiles(const QStringList& paths) : paths_(paths) {}
    // As Text gives it.
    static TraceFiles FromText(const QString& text);

    bool IsEmpty() const { return paths_.isEmpty(); }
    const QStringList& Paths() const { return paths_; }
    // Not for none.
    const QString& First() const { return paths_.front(); }
    // Behind the first.
    QStringList More() const { return paths_.mid(1); }
    TraceFiles Absolute() const;
    // For lists of recordings: a path a line.
    QString Text() const;
    // For people: the name of the first file, and how many there are besides.
    QString Name() const;
    friend bool operator==(const TraceFiles&, const TraceFiles&) = default;

  private:
    QStringList paths_;
};

}  // namespace kvx::desktop
