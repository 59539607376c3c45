# What needs windows and is the same on every back-end: the platform's tests, the component's sessions and
# the flows of its views. Where a test has its hands on the toolkit itself, it asks kvx_toolkit.
if(KVX_QT)
  find_package(Qt6 REQUIRED COMPONENTS Test)
  add_library(kvx_toolkit STATIC support/toolkit/QtToolkit.cpp)
  target_link_libraries(kvx_toolkit PRIVATE Qt6::Widgets Qt6::Test)
else()
  add_library(kvx_toolkit STATIC support/toolkit/Win32Toolkit.cpp)
  target_link_libraries(kvx_toolkit PRIVATE gdi32)
endif()
target_include_directories(kvx_toolkit PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(kvx_toolkit PUBLIC kvx_platform GTest::gtest)

kvx_test(platform DIR platform DEPS kvx_platform)
kvx_test(dialogs DIR dialogs DEPS kvx_toolkit)
foreach(variant "right" "type VARIANT_WRONG_TYPE" "no_type VARIANT_NO_TYPE"
        "product VARIANT_WRONG_PRODUCT" "no_product VARIANT_NO_PRODUCT"
        "ordinal VARIANT_ORDINAL=2" "interface VARIANT_MINOR=1")
  separate_arguments(variant UNIX_COMMAND "${variant}")
  list(POP_FRONT variant name)
  add_library(resource_${name} MODULE utils/resources/ResourceVariant.cpp)
  target_link_libraries(resource_${name} PRIVATE kvx_options)
  target_compile_definitions(resource_${name} PRIVATE ${variant})
  if(WIN32)
    set_target_properties(resource_${name} PROPERTIES PREFIX "")
  endif()
endforeach()
if(KVX_QT)
  kvx_test(utils DIR utils DEPS kvx_utils)
  add_dependencies(test_utils resource_right resource_type resource_no_type resource_product
                   resource_no_product resource_ordinal resource_interface)
endif()
kvx_test(display DIR display DEPS kvx_display)
add_dependencies(test_display KvxOSTraceExtRes)
kvx_test(framework DIR framework DEPS kvx_framework)
kvx_test(traceview DIR traceview DEPS kvx_sink kvx_resources kvx_toolkit)
kvx_test(analyze DIR analyze DEPS kvx_sink kvx_resources)
kvx_test(component DIR component DEPS kvx_host kvx_toolkit)
if(WIN32)
  # Hosts that fail in one way each: what they go through is no matter of the back-end, and there are hundreds.
  set_property(TEST component APPEND PROPERTY ENVIRONMENT
               "GTEST_FILTER=-MisbehavingHost.Each*:MisbehavingHost.Services*")
endif()
kvx_test(frame DIR frame DEPS kvx_component)
target_sources(test_frame PRIVATE component/TestDocking.cpp)
add_dependencies(test_frame KvxOSTraceExtRes)
# The Workbench's debugger library, also where there is no Workbench.
if(NOT TARGET KvxDebugger)
  add_library(KvxDebugger MODULE ${CMAKE_SOURCE_DIR}/src/workbench/debuglib/DebuggerLibrary.cpp)
  target_link_libraries(KvxDebugger PRIVATE kvx_options)
  set_target_properties(KvxDebugger PROPERTIES PREFIX "")
endif()
add_library(debugger_no_eval MODULE ${CMAKE_SOURCE_DIR}/src/workbench/debuglib/DebuggerLibrary.cpp)
target_link_libraries(debugger_no_eval PRIVATE kvx_options)
target_compile_definitions(debugger_no_eval PRIVATE EXP_Eval=EXP_SomethingElse)
if(WIN32)
  set_target_properties(debugger_no_eval PROPERTIES PREFIX "")
endif()
add_dependencies(test_component KvxOSTrace KvxOSTraceExtRes KvxDebugger debugger_no_eval resource_type
                 resource_product resource_ordinal resource_right)

# Pictures of both windows, for comparison across back-ends.
add_executable(window_pictures pictures/WindowPictures.cpp component/TestHost.cpp component/TestDocking.cpp
               component/TestServices.cpp)
target_link_libraries(window_pictures PRIVATE kvx_host kvx_picture kvx_toolkit GTest::gtest)
set_target_properties(window_pictures PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
add_dependencies(window_pictures KvxOSTrace KvxOSTraceExtRes KvxDebugger)
kvx_test(viewer DIR viewer DEPS kvx_viewer kvx_simulation kvx_toolkit)
add_dependencies(test_viewer KvxOSTrace KvxOSTraceExtRes)
