# Checks that a document quotes a file whole, as one fenced code block
# (cmake -P): the block's lines are exactly the file's.
# Arguments: DOCUMENT, FILE, LANGUAGE (the block's info string).
file(READ "${DOCUMENT}" document)
file(READ "${FILE}" quoted)
string(FIND "${document}" "```${LANGUAGE}\n${quoted}```\n" at)
if(at EQUAL -1)
  message(FATAL_ERROR "${DOCUMENT} has no ```${LANGUAGE} block that holds ${FILE} as it is")
endif()
