#include "workbench/desktop/window/ApplicationIcon.h"

namespace kvx::desktop {

QIcon ApplicationIcon() {
    return QIcon(":/kvxostrace.svg");
}

}  // namespace kvx::desktop
