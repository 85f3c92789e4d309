# The programs as they are installed: `cmake --install <build> --component Programs`, and those for whoever
# uses any program of the kit: KitPrograms. Or as Debian packages, which Scripts/package makes.
include(GNUInstallDirs)
add_subdirectory(Tools/Defaults)
add_subdirectory(Tools/JobLink)

set(programs_folder ${CMAKE_INSTALL_LIBEXECDIR}/vesper-pro-agent)
set(made ${PROJECT_BINARY_DIR}/Programs)

set(of_programs COMPONENT Programs EXCLUDE_FROM_ALL)
set(of_kit COMPONENT KitPrograms EXCLUDE_FROM_ALL)

install(TARGETS vesper-pro-agent
        DESTINATION "${programs_folder}/Vesper Pro Agent.app/${bundle_executables}" ${of_programs})
install(DIRECTORY "${PROJECT_BINARY_DIR}/Vesper Pro Agent.app" DESTINATION ${programs_folder} ${of_programs}
        PATTERN "${bundle_executables}" EXCLUDE)
string(REGEX REPLACE "[^/]+" ".." to_prefix ${CMAKE_INSTALL_BINDIR})
file(MAKE_DIRECTORY ${made})
file(CREATE_LINK "${to_prefix}/${programs_folder}/Vesper Pro Agent.app/${bundle_executables}/Vesper Pro Agent"
     ${made}/vesper-pro-agent SYMBOLIC)
install(FILES ${made}/vesper-pro-agent DESTINATION ${CMAKE_INSTALL_BINDIR} ${of_programs})
install(TARGETS corbel-defaults DESTINATION ${CMAKE_INSTALL_BINDIR} ${of_kit})

# Started at login by systemd, or else by the desktop; both watch the folders that the unit names, and
# Vesper Pro shows those.
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/vesper-pro-agent.service startup_folders REGEX "^Environment=CORBEL_STARTUP_FOLDERS=")
string(REPLACE "Environment=" "" startup_folders "${startup_folders}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/vesper-pro-agent.desktop.in ${made}/vesper-pro-agent.desktop @ONLY)
if(TARGET vesper-job-link)
    set(manual_of_job_link vesper-job-link.1)
    install(TARGETS vesper-job-link DESTINATION ${CMAKE_INSTALL_BINDIR} ${of_programs})
    configure_file(${CMAKE_CURRENT_LIST_DIR}/com.tarnwell.VesperPro10.desktop.in
                   ${made}/com.tarnwell.VesperPro10.desktop @ONLY)
    install(FILES ${made}/com.tarnwell.VesperPro10.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications ${of_programs})
endif()
set(units lib/systemd/user) # on every machine, whatever the folder of libraries
install(FILES ${CMAKE_CURRENT_LIST_DIR}/vesper-pro-agent.service DESTINATION ${units} ${of_programs})
file(MAKE_DIRECTORY ${made}/wanted)
file(CREATE_LINK ../vesper-pro-agent.service ${made}/wanted/vesper-pro-agent.service SYMBOLIC)
install(FILES ${made}/wanted/vesper-pro-agent.service
        DESTINATION ${units}/graphical-session.target.wants ${of_programs})
install(CODE "
    set(etc \"\${CMAKE_INSTALL_PREFIX}/etc\")
    if(CMAKE_INSTALL_PREFIX STREQUAL /usr)
        set(etc /etc) # by the Filesystem Hierarchy Standard 3.0
    endif()
    file(INSTALL \"${made}/vesper-pro-agent.desktop\" DESTINATION \"\${etc}/xdg/autostart\")" ${of_programs})

# What the desktop shows of them.
set(icons ${PROJECT_SOURCE_DIR}/Packaging/Icons/com.tarnwell.VesperPro10)
install(FILES ${icons}.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps ${of_programs})
install(FILES ${icons}-symbolic.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/symbolic/apps ${of_programs})
configure_file(${CMAKE_CURRENT_LIST_DIR}/com.tarnwell.VesperPro10.metainfo.xml.in
               ${made}/com.tarnwell.VesperPro10.metainfo.xml @ONLY)
install(FILES ${made}/com.tarnwell.VesperPro10.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo ${of_programs})

# Texts. Debian wants what nobody reads unpacked to be packed, without a time.
find_program(GZIP gzip REQUIRED)
function(corbel_pack source name)
    execute_process(COMMAND ${GZIP} -9nc ${source} OUTPUT_FILE ${made}/${name} COMMAND_ERROR_IS_FATAL ANY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
endfunction()
foreach(page vesper-pro-agent.1 ${manual_of_job_link})
    corbel_pack(${CMAKE_CURRENT_LIST_DIR}/Manual/${page} ${page}.gz)
    install(FILES ${made}/${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 ${of_programs})
endforeach()
corbel_pack(${CMAKE_CURRENT_LIST_DIR}/Manual/corbel-defaults.1 corbel-defaults.1.gz)
install(FILES ${made}/corbel-defaults.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 ${of_kit})
install(FILES ${CMAKE_CURRENT_LIST_DIR}/Completion/corbel-defaults.bash
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME corbel-defaults ${of_kit})
install(FILES ${CMAKE_CURRENT_LIST_DIR}/Completion/_corbel-defaults
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions ${of_kit})

include(${CMAKE_CURRENT_LIST_DIR}/Packages.cmake)
