# What a program needs that is built on the component: headers, and the package for CMake.
include(CMakePackageConfigHelpers)

set(headers ${CMAKE_INSTALL_INCLUDEDIR}/kvxostrace)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/src/platform ${CMAKE_SOURCE_DIR}/src/host DESTINATION ${headers}
        COMPONENT development FILES_MATCHING PATTERN "*.h" PATTERN qt EXCLUDE)
# The exported classes of the framework and what their headers include.
foreach(header framework/CoreView.h framework/QView.h framework/SizerBar.h framework/WinMgr.h
        framework/WinRect.h trace/Progress.h trace/dialogs/StopDlg.h utils/Path.h utils/Profile.h)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${CMAKE_SOURCE_DIR}/src/${header} DESTINATION ${headers}/${folder}
          COMPONENT development)
endforeach()

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/KvxOSTrace)
install(EXPORT KvxOSTraceTargets NAMESPACE KvxOSTrace:: DESTINATION ${package}
        COMPONENT development)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/KvxOSTraceConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_SOURCE_DIR}/cmake/KvxOSTraceConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/KvxOSTraceConfigVersion.cmake
        DESTINATION ${package} COMPONENT development)
