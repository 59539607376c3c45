#pragma once
// A file that is written.

#include "workbench/simulation/ByteOutput.h"

namespace kvx::simulation {

class FileOutput : public IByteOutput {
  public:
    // Opens it, and empties one that is there. What fails shows in the first Write, and in Close.
    explicit FileOutput(const std::string& path);
    FileOutput(const FileOutput&) = delete;
    FileOutput& operator=(const FileOutput&) = delete;
    ~FileOutput() override;

    bool IsOpen() const { return file_ >= 0; }
    // An ordinary file, no device and no pipe.
    bool IsRegular() const;
    bool Write(std::string_view bytes) override;
    // All has arrived; false: see Failure.
    bool Close();
    // "path: reason".
    std::string Failure() const override;

  private:
    const std::string path_;
    int file_;
    int error_ = 0;  // errno
};

// Writes a whole file. An empty text, or "path: reason".
std::string WriteFile(const std::string& path, std::string_view bytes);

}  // namespace kvx::simulation
