# Strict settings for every target we own (not for Qt's generated code).
function(tarn_strict target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
    -Wold-style-cast -Wcast-align -Woverloaded-virtual -Wimplicit-fallthrough)
  if(TARN_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  # GCC 12 optimising std::rotate over records holding std::optional<QString>
  # reports Qt's string destructor as reading an uninitialised pointer; the
  # warning is a known false positive of that release and would stop every
  # optimised build.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE $<$<NOT:$<CONFIG:Debug>>:-Wno-maybe-uninitialized>)
  endif()
  target_compile_definitions(${target} PRIVATE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_FOREACH
    QT_USE_QSTRINGBUILDER)
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
endfunction()

# A static library of one feature folder.
function(tarn_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC ${ARG_LIBS})
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  tarn_strict(${name})
endfunction()

# A feature's QML module "PiloTarn.NAME" as a static library: its QML files
# and the C++ that registers its types, built beside PiloTarn.Shell so that
# the tools (qmllint, qmlcachegen) and the app find every module on one
# import path, and embedded under a prefix QML searches without being told.
#   tarn_qml_module(target NAME Chat QML_FILES ... SOURCES ... LIBS ... [DEPENDENCIES ...])
function(tarn_qml_module target)
  cmake_parse_arguments(ARG "" "NAME" "QML_FILES;SOURCES;LIBS;DEPENDENCIES" ${ARGN})
  set(dependencies)
  if(ARG_DEPENDENCIES)
    set(dependencies DEPENDENCIES ${ARG_DEPENDENCIES})
  endif()
  qt_add_library(${target} STATIC)
  qt_add_qml_module(${target}
    URI PiloTarn.${ARG_NAME}
    VERSION 1.0
    RESOURCE_PREFIX /qt-project.org/imports
    OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/src/shell/PiloTarn/${ARG_NAME}
    ${dependencies}
    QML_FILES ${ARG_QML_FILES}
    SOURCES ${ARG_SOURCES})
  target_link_libraries(${target} PRIVATE ${ARG_LIBS} Qt6::Quick)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/src)
endfunction()
