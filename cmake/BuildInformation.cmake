# Writes the build's version, number and source revision, and where it is installed, into a header, anew whenever
# the revision changes.
find_package(Git QUIET)
set(ORVELLOS_BUILD_NUMBER 0)
set(ORVELLOS_REVISION "unknown")
if(Git_FOUND AND EXISTS "${PROJECT_SOURCE_DIR}/.git")
    execute_process(COMMAND "${GIT_EXECUTABLE}" rev-list --count HEAD WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
                    OUTPUT_VARIABLE number OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE numberFailed ERROR_QUIET)
    execute_process(COMMAND "${GIT_EXECUTABLE}" rev-parse --short=8 HEAD WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
                    OUTPUT_VARIABLE revision OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE revisionFailed ERROR_QUIET)
    # What a commit or a switch of the branch changes; in a worktree it lies elsewhere than in .git.
    foreach(name HEAD logs/HEAD)
        execute_process(COMMAND "${GIT_EXECUTABLE}" rev-parse --git-path ${name} WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
                        OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
        cmake_path(ABSOLUTE_PATH path BASE_DIRECTORY "${PROJECT_SOURCE_DIR}")
        if(EXISTS "${path}" AND NOT IS_DIRECTORY "${path}")
            set_property(DIRECTORY "${PROJECT_SOURCE_DIR}" APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${path}")
        endif()
    endforeach()
    if(numberFailed EQUAL 0 AND revisionFailed EQUAL 0)
        set(ORVELLOS_BUILD_NUMBER "${number}")
        set(ORVELLOS_REVISION "${revision}")
    endif()
endif()
# Below the prefix, so that an installation can be moved as a whole.
file(RELATIVE_PATH ORVELLOS_BIN_FOLDER "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_BINDIR}")
file(RELATIVE_PATH ORVELLOS_LIBEXEC_FOLDER "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_LIBEXECDIR}/orvello")
configure_file("${PROJECT_SOURCE_DIR}/cmake/BuildInformation.h.in" "${PROJECT_BINARY_DIR}/generated/BuildInformation.h" @ONLY)
