#pragma once
// A folder that is there for one test.

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace kvx::simulation {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name =
            (std::filesystem::temp_directory_path() / "kvx_simulationXXXXXX").string();
        if (mkdtemp(name.data())) path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string Path(const std::string& name) const { return (path_ / name).string(); }
    std::string Read(const std::string& name) const {
        std::ifstream file(path_ / name, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

  private:
    std::filesystem::path path_;
};

}  // namespace kvx::simulation
