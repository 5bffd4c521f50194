# Compiler settings of our own targets: link tovrel_build_options PRIVATE, hosts never see it.
include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(TOVREL_CCACHE ccache)
  if(TOVREL_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${TOVREL_CCACHE}")
  endif()
endif()

add_library(tovrel_build_options INTERFACE)
target_compile_features(tovrel_build_options INTERFACE cxx_std_20)
target_compile_options(tovrel_build_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(TOVREL_WARNINGS_AS_ERRORS)
  target_compile_options(tovrel_build_options INTERFACE -Werror)
endif()
# Boost.Asio is compiled once, into Platform. A shared Platform keeps those symbols to itself, so its dependants then use
# the header-only form.
if(NOT BUILD_SHARED_LIBS)
  target_compile_definitions(tovrel_build_options INTERFACE BOOST_ASIO_SEPARATE_COMPILATION)
endif()

# Most of the library waits for a network: it is compiled small, and only what runs for each byte or request fast.
add_library(tovrel_size_options INTERFACE)
target_compile_options(tovrel_size_options INTERFACE $<$<CONFIG:Release>:-Os -ffunction-sections -fdata-sections>)
target_link_options(tovrel_size_options INTERFACE $<$<CONFIG:Release>:LINKER:--gc-sections>)
function(tovrel_compile_fast target)
  set_source_files_properties(${ARGN} TARGET_DIRECTORY ${target} PROPERTIES COMPILE_OPTIONS $<$<CONFIG:Release>:-O3>)
endfunction()

if(TOVREL_SANITIZERS)
  add_compile_options(-fsanitize=${TOVREL_SANITIZERS} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TOVREL_SANITIZERS})
  if(TOVREL_SANITIZERS MATCHES "undefined")
    add_compile_options(-fno-sanitize-recover=all)
  endif()
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Wrong in optimised builds with GCC 12: it pairs a coroutine frame's operator new with the wrong operator delete once
  # it has inlined one of them, sees overlaps in "text" + std::string, and takes the text of an absent optional for used.
  target_compile_options(tovrel_build_options INTERFACE -Wno-mismatched-new-delete -Wno-restrict
    $<$<CONFIG:Release,RelWithDebInfo>:-Wno-maybe-uninitialized>)
endif()

if(TOVREL_SANITIZERS STREQUAL "thread" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC warns about every fence under ThreadSanitizer; Asio's come from its headers.
  target_compile_options(tovrel_build_options INTERFACE -Wno-tsan)
endif()
