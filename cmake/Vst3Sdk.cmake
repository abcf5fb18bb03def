# Finds the VST 3 SDK with VSTGUI and gives this project's targets for it:
#   vstk2x_sdk          what the plug-in links of the SDK (factory, component bases, preset files)
#   vstk2x_sdk_hosting  what a host links of it (module loader, messages, events, memory streams)
#   vstk2x_vstgui       VSTGUI's timer and nothing that draws
#   moduleinfotool, validator   the SDK's own tools, built when something asks for them
#
# The checkout is VST3_SDK_DIR (cache variable or environment), else what scripts/fetch-sdk fetches.

if(NOT VST3_SDK_DIR AND DEFINED ENV{VST3_SDK_DIR})
  set(VST3_SDK_DIR "$ENV{VST3_SDK_DIR}")
endif()
if(NOT VST3_SDK_DIR)
  execute_process(
    COMMAND "${PROJECT_SOURCE_DIR}/scripts/fetch-sdk"
    OUTPUT_VARIABLE fetched
    OUTPUT_STRIP_TRAILING_WHITESPACE
    RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "No VST 3 SDK: name a checkout with -DVST3_SDK_DIR=DIR (see the line above).")
  endif()
  set(VST3_SDK_DIR "${fetched}")
endif()
set(VST3_SDK_DIR "${VST3_SDK_DIR}" CACHE PATH "Checkout of the VST 3 SDK 3.7 with VSTGUI" FORCE)
if(NOT EXISTS "${VST3_SDK_DIR}/pluginterfaces/base/funknown.h")
  message(FATAL_ERROR "VST3_SDK_DIR is '${VST3_SDK_DIR}', which is no VST 3 SDK checkout.")
endif()

# A function, so that the SDK's variables stay in its own scope.
function(vstk2x_add_sdk)
  list(APPEND CMAKE_MODULE_PATH "${VST3_SDK_DIR}/cmake/modules")
  set(SDK_ROOT "${VST3_SDK_DIR}")
  set(public_sdk_SOURCE_DIR "${SDK_ROOT}/public.sdk")
  set(pluginterfaces_SOURCE_DIR "${SDK_ROOT}/pluginterfaces")
  set(VST_SDK TRUE)
  set(SMTG_RUN_VST_VALIDATOR OFF)
  set(SMTG_CREATE_BUNDLE_FOR_WINDOWS OFF)
  # It asks Xcode for its version and stops without one. Xcode's command-line tools alone have none, but
  # their compiler has Xcode's number.
  if(APPLE AND NOT DEFINED ENV{XCODE_VERSION})
    execute_process(COMMAND xcodebuild -version RESULT_VARIABLE without_xcode OUTPUT_QUIET ERROR_QUIET)
    if(NOT without_xcode EQUAL 0)
      string(REGEX MATCH "^[0-9]+" XCODE_VERSION "${CMAKE_CXX_COMPILER_VERSION}")
      set(ENV{XCODE_VERSION} "${XCODE_VERSION}")
    endif()
  endif()
  include(SMTG_VST3_SDK)
  smtg_setup_platform_toolset()
  smtg_setup_symbol_visibility()

  set(bin "${CMAKE_CURRENT_BINARY_DIR}/sdk")
  foreach(part pluginterfaces base public.sdk public.sdk/samples/vst-hosting/validator
               public.sdk/samples/vst-utilities/moduleinfotool)
    add_subdirectory("${SDK_ROOT}/${part}" "${bin}/${part}" EXCLUDE_FROM_ALL)
  endforeach()

  add_library(vstk2x_sdk_memorystream STATIC EXCLUDE_FROM_ALL
    "${SDK_ROOT}/public.sdk/source/common/memorystream.cpp")
  target_link_libraries(vstk2x_sdk_memorystream PUBLIC sdk_common)
  add_library(vstk2x_sdk_hosting_extras STATIC EXCLUDE_FROM_ALL
    $<IF:$<PLATFORM_ID:Darwin>,${SDK_ROOT}/public.sdk/source/vst/hosting/module_mac.mm,${SDK_ROOT}/public.sdk/source/vst/hosting/module_linux.cpp>)
  target_link_libraries(vstk2x_sdk_hosting_extras PUBLIC sdk_hosting vstk2x_sdk_memorystream)
  if(APPLE)
    target_compile_options(vstk2x_sdk_hosting_extras PRIVATE $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc>)
    target_link_libraries(vstk2x_sdk_hosting_extras PUBLIC "-framework Cocoa")
  endif()

  set(vstgui "${SDK_ROOT}/vstgui4/vstgui/lib")
  add_library(vstk2x_vstgui_timer STATIC EXCLUDE_FROM_ALL
    "${vstgui}/cvstguitimer.cpp" "${vstgui}/vstguidebug.cpp" "${vstgui}/platform/platformfactory.cpp"
    $<$<PLATFORM_ID:Darwin>:${vstgui}/platform/mac/mactimer.cpp>)
  target_include_directories(vstk2x_vstgui_timer PUBLIC "${SDK_ROOT}/vstgui4")
  target_compile_features(vstk2x_vstgui_timer PUBLIC cxx_std_17)

  # No program of ours links these.
  foreach(target base pluginterfaces sdk sdk_common)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources EXCLUDE REGEX "/(conststringtable|dataexchange|fcondition|fdynlib|openurl|systemclipboard_[a-z0-9]+|systemtime|testing|vst2persistence|vstnoteexpressiontypes|vstrepresentation)\\.(cpp|mm)$")
    set_property(TARGET ${target} PROPERTY SOURCES "${sources}")
  endforeach()
  # What is not shipped is compiled fast: the SDK's tools, and its libraries where they run a Mac's code.
  set(helpers validator moduleinfotool)
  if(VSTK2X_MACHO_BUNDLE)
    list(APPEND helpers base sdk_common sdk_hosting)
  endif()
  foreach(target pluginterfaces base sdk_common sdk sdk_hosting vstk2x_sdk_hosting_extras
                 vstk2x_sdk_memorystream vstk2x_vstgui_timer validator moduleinfotool)
    set_target_properties(${target} PROPERTIES
      POSITION_INDEPENDENT_CODE ON CXX_CLANG_TIDY "" CXX_VISIBILITY_PRESET hidden
      VISIBILITY_INLINES_HIDDEN ON)
    target_include_directories(${target} SYSTEM PRIVATE "${SDK_ROOT}")
    # -O3 makes the module 12 KB larger, for as many instructions.
    set(optimisation -O2)
    if(VSTK2X_MACHO_BUNDLE OR target IN_LIST helpers)
      set(optimisation -O0)
    endif()
    target_compile_options(${target} PRIVATE -w -ffunction-sections -fdata-sections
      $<$<CONFIG:Release>:${optimisation}> ${VSTK2X_LINE_NUMBERS})
    target_compile_definitions(${target} PRIVATE
      $<IF:$<CONFIG:Debug>,DEVELOPMENT=1;DEBUG=1,RELEASE=1;NDEBUG=1>)
  endforeach()
  set_target_properties(${helpers} PROPERTIES UNITY_BUILD ${VSTK2X_TOGETHER} UNITY_BUILD_BATCH_SIZE 0)
  # Each of these has names of its own that another file of the validator has, too.
  set_source_files_properties("${SDK_ROOT}/public.sdk/source/vst/utility/testing.cpp"
    "${SDK_ROOT}/public.sdk/samples/vst-hosting/validator/source/usediids.cpp"
    "${SDK_ROOT}/public.sdk/samples/vst-hosting/validator/source/main.cpp"
    TARGET_DIRECTORY validator PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
vstk2x_add_sdk()

# With Xcode the SDK turns on -ffast-math for all that follows, too; our code tells NaN from numbers.
get_directory_property(options COMPILE_OPTIONS)
list(REMOVE_ITEM options -ffast-math -ffp-contract=fast)
set_directory_properties(PROPERTIES COMPILE_OPTIONS "${options}")

# What every target of ours compiles with that includes an SDK header, which are system headers to us.
add_library(vstk2x_sdk_headers INTERFACE)
target_include_directories(vstk2x_sdk_headers SYSTEM INTERFACE
  "${VST3_SDK_DIR}" "${VST3_SDK_DIR}/vstgui4")
target_compile_definitions(vstk2x_sdk_headers INTERFACE
  $<IF:$<CONFIG:Debug>,DEVELOPMENT=1;DEBUG=1,RELEASE=1;NDEBUG=1>)

add_library(vstk2x_sdk INTERFACE)
# A Mac's machine code has the plug-in's part in itself; its tests ask for what a host has, too.
target_link_libraries(vstk2x_sdk INTERFACE
  vstk2x_sdk_headers $<IF:$<BOOL:${VSTK2X_MACHO_BUNDLE}>,sdk_hosting,sdk> vstk2x_sdk_memorystream)

add_library(vstk2x_sdk_hosting INTERFACE)
target_link_libraries(vstk2x_sdk_hosting INTERFACE vstk2x_sdk_headers vstk2x_sdk_hosting_extras)

# platformfactory.cpp also names VSTGUI's own drawing factory, which is not compiled: the linker has
# to drop the function that does.
add_library(vstk2x_vstgui INTERFACE)
target_link_libraries(vstk2x_vstgui INTERFACE vstk2x_sdk_headers vstk2x_vstgui_timer)
target_link_options(vstk2x_vstgui INTERFACE
  $<IF:$<PLATFORM_ID:Darwin>,-Wl$<COMMA>-dead_strip,-Wl$<COMMA>--gc-sections>)
