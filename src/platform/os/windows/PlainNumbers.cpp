#include "platform/os/PlainNumbers.h"

#include <locale.h>

#include <string>

namespace kvx::os {

struct PlainNumbers::Before {
    int mode;
    std::string name;
};

PlainNumbers::PlainNumbers() : before_(nullptr) {
    const char* const name = setlocale(LC_NUMERIC, nullptr);
    if (name && std::string("C") == name) return;
    before_ = new Before{_configthreadlocale(_ENABLE_PER_THREAD_LOCALE), name ? name : "C"};
    setlocale(LC_NUMERIC, "C");
}

PlainNumbers::~PlainNumbers() {
    if (!before_) return;
    setlocale(LC_NUMERIC, before_->name.c_str());
    _configthreadlocale(before_->mode);
    delete before_;
}

}  // namespace kvx::os
