# The command line without the window.
kvx_library(windowless DIRS workbench/windowless DEPS kvx_picture)
add_executable(kvxostrace main.cpp)
target_compile_definitions(kvxostrace PRIVATE KVX_VERSION="${PROJECT_VERSION}")
target_link_libraries(kvxostrace PRIVATE kvx_windowless)
add_dependencies(kvxostrace KvxOSTrace KvxOSTraceExtRes)
install(TARGETS kvxostrace KvxPlatform KvxOSTrace KvxOSTraceExtRes
        RUNTIME DESTINATION bin LIBRARY DESTINATION bin)
