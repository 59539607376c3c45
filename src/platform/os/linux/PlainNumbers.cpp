#include "platform/os/PlainNumbers.h"

#include <locale.h>

namespace kvx::os {
namespace {

locale_t Plain() {
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    return plain;
}

}  // namespace

PlainNumbers::PlainNumbers() : before_(reinterpret_cast<Before*>(uselocale(Plain()))) {}

PlainNumbers::~PlainNumbers() {
    uselocale(reinterpret_cast<locale_t>(before_));
}

}  // namespace kvx::os
