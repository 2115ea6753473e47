# The library's environment switches: the one list of them for every test,
# whether registered by vekzol_add_test() or run as a script (cmake -P) that
# includes this file.
set(VEKZOL_TEST_SWITCHES
  VEK_ZOL_LOG_ENABLED
  VEK_ZOL_LOG_VERBOSE
  JBM_RQT_IN
  VEK_ZOL_TIMERS_ENABLED
  VEK_ZOL_DUMP_DECOMPRESSED_BLOBS)

# The variables of the batch session base's search, after the temporary
# directory's. They are not switches: set to empty, one ends the search, where
# an unset one lets it go on; tests that run the tool unset them.
set(VEKZOL_TEST_DIRECTORY_VARIABLES
  JBM_RQT_OUT
  JBM_RQT_TEMP)
