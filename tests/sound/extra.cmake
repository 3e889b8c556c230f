# The recording tests ask Qt Multimedia which sound outputs there are.
find_package(Qt6 6.4 REQUIRED COMPONENTS Multimedia)
target_link_libraries(test_sound PRIVATE Qt6::Multimedia)
# The main run reaches no sound server, whatever the machine has: the component must still
# work there. The sound itself is recorded under a private PulseAudio server.
set_tests_properties(sound PROPERTIES ENVIRONMENT
  "QT_QPA_PLATFORM=offscreen;PULSE_SERVER=unix:${CMAKE_CURRENT_BINARY_DIR}/no-sound-server")
add_test(NAME sound_pulseaudio
         COMMAND sh ${CMAKE_CURRENT_LIST_DIR}/with-pulseaudio.sh $<TARGET_FILE:test_sound>
                 --gtest_filter=SoundServer.*)
set_tests_properties(sound_pulseaudio PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen"
                                                 TIMEOUT 300)
