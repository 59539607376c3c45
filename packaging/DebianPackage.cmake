# The Debian packages, of the program and of what is needed to build on the component: `cpack` in the
# build folder, or scripts/make-package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kvxostrace)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME kvxostrace)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME kvxostrace-dev)
set(CPACK_PACKAGE_CONTACT "KvxOSTrace maintainers <maintainers@kvxostrace.invalid>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Not linked: the chart's font, one for menus and dialogs, and the toolkit's reader of the window's icon.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "kvxostrace (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "fonts-liberation, fonts-dejavu-core, libqt6svg6")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "qt6-wayland, trace-cmd, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
"viewer of recorded traces of real-time kernels
Draws what a uITRON-style kernel did as a time chart, one line for each
task and handler: when it ran, what it waited for, which system calls it
issued and who took the processor from whom. Puts the same recording into
numbers: run times, ready-to-run waits, the history of system calls.
.
Reads ITRON kernel text logs and CTF traces of Zephyr and Linux. The same
analyses are there without a window, for scripts.")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"headers for programs that host the OS trace component
The interfaces between the component and its hosts, its platform layer and
its framework classes, with a package for CMake.")

include(CPack)
