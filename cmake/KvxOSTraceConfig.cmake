# For programs that are built on the component: the targets KvxOSTrace::KvxPlatform (windows, controls,
# dialogs) and KvxOSTrace::KvxOSTrace (the framework classes that the component exports).
include(${CMAKE_CURRENT_LIST_DIR}/KvxOSTraceTargets.cmake)
