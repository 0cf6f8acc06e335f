find_program(VORA_BWRAP bwrap DOC "bubblewrap, which gives each test a private /opt")
if(NOT VORA_BWRAP)
  message(WARNING "bwrap (Debian package bubblewrap) is missing: the tests will not run")
endif()

set(VORA_TEST_LAUNCHER "" CACHE FILEPATH "Program that runs each test, such as tests/sanitizers/run or an emulator")

# Every test has a private /opt, /tmp, home, process list and loopback of its own. They end with it, so that tests run side
# by side and leave nothing behind. X servers with the same display number, one in each sandbox, would overwrite each
# other's keyboard map in /var/lib/xkb. The folders of the build are shown again in case they lie under a hidden one.
set(VORA_SANDBOX_ALONE
  ${VORA_BWRAP} --dev-bind / / --tmpfs /opt --tmpfs /tmp --tmpfs /var/lib/xkb
  --dev-bind ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR} --dev-bind ${CMAKE_BINARY_DIR} ${CMAKE_BINARY_DIR}
  --dir /tmp/home --perms 0700 --dir /tmp/run --chdir /tmp
  --setenv HOME /tmp/home --setenv XDG_RUNTIME_DIR /tmp/run --setenv LC_ALL C.UTF-8
  --unsetenv XDG_CONFIG_HOME --unsetenv DISPLAY --unsetenv WAYLAND_DISPLAY --unsetenv DBUS_SESSION_BUS_ADDRESS
  --unshare-pid --proc /proc --unshare-net --die-with-parent --
)
set(VORA_SANDBOX ${VORA_SANDBOX_ALONE} ${VORA_TEST_LAUNCHER})
