# The two kinds of target of this tree: a room of src/, and a test of one.

add_library(zel_flags INTERFACE)
target_compile_options(zel_flags INTERFACE
    -Wall -Wextra -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    $<$<BOOL:${ZEL_WERROR}>:-Werror>)
target_compile_definitions(zel_flags INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_FOREACH)
if(ZEL_SANITIZE)
    target_compile_options(zel_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(zel_flags INTERFACE -fsanitize=address,undefined)
endif()
if(ZEL_FUZZ)
    target_compile_options(zel_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
target_include_directories(zel_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)

# zel_room(NAME libraries...): a static library of all sources in this folder (sub-folders that are
# rooms of their own have a CMakeLists.txt and are left out). The libraries are what the room may use.
function(zel_room name)
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h *.ui *.qrc)
    add_library(zel_${name} ${sources}) # static, but where BUILD_SHARED_LIBS is set
    set_target_properties(zel_${name} PROPERTIES LINKER_LANGUAGE CXX)
    target_link_libraries(zel_${name} PUBLIC zel_flags ${ARGN})
    set_target_properties(zel_${name} PROPERTIES AUTOUIC_SEARCH_PATHS ${CMAKE_CURRENT_SOURCE_DIR})
endfunction()

# zel_tests(libraries...): every tst_*.cpp in this folder becomes one CTest of Qt Test, labelled with
# the room that it is about.
function(zel_tests)
    file(GLOB tests CONFIGURE_DEPENDS tst_*.cpp)
    file(RELATIVE_PATH room ${PROJECT_SOURCE_DIR}/tests ${CMAKE_CURRENT_SOURCE_DIR})
    string(REGEX MATCH "^(platform/)?[a-z]+" room ${room})
    foreach(source ${tests})
        get_filename_component(name ${source} NAME_WE)
        add_executable(${name} ${source})
        target_link_libraries(${name} PRIVATE zel_flags Qt6::Test ${ARGN})
        target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
        target_compile_definitions(${name} PRIVATE ZEL_SOURCE_DIR="${PROJECT_SOURCE_DIR}" ZEL_BINARY_DIR="${PROJECT_BINARY_DIR}")
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES TIMEOUT 300 LABELS "${room}" ENVIRONMENT
            "QT_QPA_PLATFORM=offscreen;TZ=UTC;LC_ALL=C.UTF-8;QT_SCALE_FACTOR=1")
    endforeach()
endfunction()
