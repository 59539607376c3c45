# The command line without the window.
kvx_library(windowless DIRS workbench/windowless DEPS kvx_picture)
add_executable(kvxostrace main.cpp)
target_compile_definitions(kvxostrace PRIVATE KVX_VERSION="${PROJECT_VERSION}")
target_link_libraries(kvxostrace PRIVATE kvx_windowless)
kvx_windows_binary(kvxostrace "OS trace command line")
add_dependencies(kvxostrace KvxOSTrace KvxOSTraceExtRes)
set_target_properties(kvxostrace KvxPlatform KvxOSTrace KvxOSTraceExtRes PROPERTIES INSTALL_RPATH "$ORIGIN")
install(TARGETS kvxostrace KvxPlatform KvxOSTrace KvxOSTraceExtRes
        RUNTIME DESTINATION bin LIBRARY DESTINATION bin)

# One archive with all that runs.
set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME KvxOSTrace)
string(TOLOWER "${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}" CPACK_SYSTEM_NAME)
set(CPACK_ARCHIVE_COMPONENT_INSTALL OFF)
include(CPack)
