# Tests of the drawings: compare --format dot|svg|html and show --format
# dot|svg. Included by CMakeLists.txt beside it, whose functions and
# folders (tool_data, tool_expected, tool_examples, tool_work_root) they
# use.

# The DOT text, byte for byte: each kind of change, the entry points, the
# unchanged neighbours, parallel edges and ends that name no object,
# escaping, and the cut of a drawing over --max-drawn.
vekzol_tool_test(compare_dot_draws_the_example_change
  ARGS "compare|--check-names|--roots|--format|dot|@EXAMPLES@/line-old.json|@EXAMPLES@/line-new.json"
  EXIT 1 STDOUT_FILE ${tool_expected}/line-compare.dot STDERR "<none>")
vekzol_tool_test(compare_dot_draws_added_vertices_in_green_and_thickens_the_entry_points
  ARGS "compare|--roots|--format|dot|draw-line.json|draw-added.json"
  EXIT 1 STDOUT_FILE ${tool_expected}/draw-added.dot STDERR "<none>")
vekzol_tool_test(compare_dot_draws_removed_vertices_and_edges_dashed_in_red
  ARGS "compare|--format|dot|draw-line.json|draw-removed.json"
  EXIT 1 STDOUT_FILE ${tool_expected}/draw-removed.dot STDERR "<none>")
vekzol_tool_test(compare_dot_draws_a_moved_vertex_with_its_old_edge_dashed_and_its_new_one_solid
  ARGS "compare|--format|dot|draw-line.json|draw-moved.json"
  EXIT 1 STDOUT_FILE ${tool_expected}/draw-moved.dot STDERR "<none>")
vekzol_tool_test(compare_dot_draws_a_vertex_to_rename_with_its_old_and_new_name
  ARGS "compare|--check-names|--format|dot|draw-renamed.json|draw-line.json"
  EXIT 1 STDOUT_FILE ${tool_expected}/draw-renamed.dot STDERR "<none>")
vekzol_tool_test(compare_dot_draws_parallel_edges_and_ends_naming_no_object_as_points
  ARGS "compare|--roots|--format|dot|empty-model.json|draw-loose.json"
  EXIT 1 STDOUT_FILE ${tool_expected}/draw-loose-compare.dot
  STDERR "vekzol: draw-loose.json: 1 relation end(s) name no object (left unresolved)\n")
vekzol_tool_test(show_dot_draws_parallel_edges_and_ends_naming_no_object_as_points
  ARGS "show|--format|dot|draw-loose.json"
  EXIT 0 STDOUT_FILE ${tool_expected}/draw-loose-show.dot
  STDERR "vekzol: draw-loose.json: 1 relation end(s) name no object (left unresolved)\n")
vekzol_tool_test(compare_dot_escapes_quotes_backslashes_line_feeds_and_control_characters
  ARGS "compare|--check-names|--roots|--format|dot|escaping-old.json|escaping-new.json"
  EXIT 1 STDOUT_FILE ${tool_expected}/escaping-compare.dot STDERR "<none>")
vekzol_tool_test(show_dot_escapes_percent_caret_ampersand_and_a_last_backslash
  ARGS "show|--format|dot|draw-escaping.json"
  EXIT 0 STDOUT_FILE ${tool_expected}/draw-escaping-show.dot STDERR "<none>")
vekzol_tool_test(compare_dot_of_equal_models_draws_the_legend_alone_and_exits_0
  ARGS "compare|--roots|--format|dot|@EXAMPLES@/line-new.json|@EXAMPLES@/line-new.json"
  EXIT 0 STDOUT_FILE ${tool_expected}/line-identical.dot STDERR "<none>")
vekzol_tool_test(show_dot_draws_the_example_model_in_black
  ARGS "show|--format|dot|@EXAMPLES@/line-old.json"
  EXIT 0 STDOUT_FILE ${tool_expected}/line-old-show.dot STDERR "<none>")
vekzol_tool_test(show_text_format_is_the_listing
  ARGS "show|--format|text|@EXAMPLES@/line-old.json"
  EXIT 0 STDOUT_FILE ${tool_expected}/line-old-show.txt STDERR "<none>")
vekzol_tool_test(compare_dot_writes_output_file_only
  ARGS "compare|--check-names|--roots|--format|dot|@EXAMPLES@/line-old.json|@EXAMPLES@/line-new.json|-o|@WORK@/change.dot"
  EXIT 1 STDOUT "<none>" STDERR "<none>"
  WRITTEN @WORK@/change.dot WRITTEN_EXPECTED ${tool_expected}/line-compare.dot)
vekzol_tool_test(compare_svg_of_a_bad_model_keeps_the_output_file
  ARGS "compare|--format|svg|bad-syntax.json|@EXAMPLES@/line-new.json|-o|@WORK@/result.svg"
  EXIT 2 STDOUT "<none>" STDERR_FILE ${tool_expected}/bad-syntax.stderr PRESET @WORK@/result.svg)
vekzol_tool_test(compare_html_of_a_bad_model_keeps_the_output_file
  ARGS "compare|--format|html|bad-syntax.json|@EXAMPLES@/line-new.json|-o|@WORK@/result.html"
  EXIT 2 STDOUT "<none>" STDERR_FILE ${tool_expected}/bad-syntax.stderr PRESET @WORK@/result.html)

# The README's picture, docs/line-change.svg, is what the tool draws now
# (scripts/draw-example.sh writes it). The drawing depends on the models
# and Graphviz's version only: text is measured with Graphviz's own font
# metrics, not the machine's fonts.
vekzol_tool_test(compare_svg_of_the_example_is_the_picture_in_docs
  ARGS "compare|--check-names|--roots|--format|svg|@EXAMPLES@/line-old.json|@EXAMPLES@/line-new.json"
  EXIT 1 STDOUT_FILE ${PROJECT_SOURCE_DIR}/docs/line-change.svg STDERR "<none>")

# Over --max-drawn: whole parts, largest first, ties by the smallest id; a
# part that does not fit is passed over for smaller ones; the drawing's
# label and standard error tell what was left out.
vekzol_tool_test(compare_dot_over_max_drawn_keeps_the_largest_parts_and_tells_what_it_left_out
  ARGS "compare|--format|dot|--max-drawn|5|empty-model.json|draw-parts.json"
  EXIT 1 STDOUT_FILE ${tool_expected}/draw-parts-5.dot
  STDERR_FILE ${tool_expected}/draw-parts-5.stderr)
vekzol_tool_test(compare_dot_passes_over_a_part_too_large_for_smaller_ones
  ARGS "compare|--format|dot|--max-drawn|2|empty-model.json|draw-parts.json"
  EXIT 1 STDOUT_FILE ${tool_expected}/draw-parts-2.dot
  STDERR_FILE ${tool_expected}/draw-parts-2.stderr)
vekzol_tool_test(show_dot_over_max_drawn_keeps_the_largest_parts_and_tells_what_it_left_out
  ARGS "show|--format|dot|--max-drawn|5|draw-parts.json"
  EXIT 0 STDOUT_FILE ${tool_expected}/draw-parts-show-5.dot
  STDERR_FILE ${tool_expected}/draw-parts-show-5.stderr)
vekzol_tool_test(quiet_keeps_what_the_drawing_left_out_off_standard_error
  ARGS "--quiet|compare|--format|dot|--max-drawn|5|empty-model.json|draw-parts.json"
  EXIT 1 STDOUT_FILE ${tool_expected}/draw-parts-5.dot STDERR "<none>")
vekzol_tool_test(max_drawn_of_zero_is_refused
  ARGS "compare|--format|dot|--max-drawn|0|empty-model.json|draw-parts.json"
  EXIT 2 STDOUT "<none>" STDERR_REGEX "--max-drawn: Value 0 not in range")
vekzol_tool_test(show_refuses_the_html_format
  ARGS "show|--format|html|draw-parts.json"
  EXIT 2 STDOUT "<none>" STDERR_REGEX "--format: html not in {text,dot,svg}")
vekzol_tool_test(compare_help_tells_the_drawing_formats_and_limit
  ARGS "compare|--help" EXIT 0 STDERR "<none>"
  STDOUT_REGEX "--format TEXT:{text,json,dot,svg,html}.*--max-drawn N:POSITIVE=500")

# The SVG: well-formed XML whose nodes are those of the DOT text, with the
# ids drawn as they read (SvgDrawing.py).
find_package(Python3 COMPONENTS Interpreter)
if(Python3_Interpreter_FOUND)
  # vekzol_svg_test(<name> [TEXTS a|b] [ABSENT a|b] [other SvgDrawing.py
  #                 options] -- <tool arguments>)
  function(vekzol_svg_test name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG ""
      "EXIT;STDERR;STDERR_FILE;TEXTS;TEXTS_FILE;ABSENT;GENERATE;MAX_NODES" "")
    set(options --exit ${ARG_EXIT})
    if(DEFINED ARG_STDERR)
      list(APPEND options "--stderr=${ARG_STDERR}")
    endif()
    foreach(option STDERR_FILE TEXTS TEXTS_FILE ABSENT GENERATE MAX_NODES)
      if(DEFINED ARG_${option})
        string(TOLOWER "${option}" flag)
        string(REPLACE "_" "-" flag "${flag}")
        list(APPEND options "--${flag}=${ARG_${option}}")
      endif()
    endforeach()
    add_test(NAME tool.${name}
      COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_SOURCE_DIR}/SvgDrawing.py
        --tool $<TARGET_FILE:vekzol> --data ${tool_data} --work ${tool_work_root}/${name}
        ${options} ${ARG_UNPARSED_ARGUMENTS})
  endfunction()

  vekzol_svg_test(compare_svg_is_well_formed_and_draws_every_drawn_id
    EXIT 1 STDERR ""
    TEXTS "PRC-0001|PRC-0003|PRC-0004|PRC-0005|PRC-0006|PRD-0104|PRD-0105|RSC-0202|RSC-0203|RSC-0204|R-0002|R-0003|R-0004|R-0005|R-0104|R-0105|R-0106|R-0202|R-0203|R-0204|Prime body → Paint body"
    ABSENT "PRC-0002|PRD-0101|PRD-0102|RSC-0201|R-0001|R-0102"
    -- compare --check-names --roots ${tool_examples}/line-old.json ${tool_examples}/line-new.json)
  vekzol_svg_test(compare_svg_of_escaped_ids_is_well_formed_and_draws_them_as_they_read
    EXIT 1 STDERR ""
    TEXTS_FILE ${tool_expected}/escaping-compare.svg-texts
    -- compare --check-names --roots escaping-old.json escaping-new.json)
  vekzol_svg_test(show_svg_of_escaped_ids_is_well_formed_and_draws_them_as_they_read
    EXIT 0 STDERR ""
    TEXTS_FILE ${tool_expected}/draw-escaping-show.svg-texts
    -- show draw-escaping.json)
  vekzol_svg_test(show_svg_draws_parallel_edges_and_ends_naming_no_object
    EXIT 0 STDERR "vekzol: draw-loose.json: 1 relation end(s) name no object (left unresolved)\n"
    TEXTS "PRC-A|PRC-B|PRC-C|R-1|R-2|R-3|R-4|R-5"
    -- show draw-loose.json)
  # 10^5 elements with 2 % of them removed, added, moved and renamed each:
  # about 10,000 changed vertices in 4,000 parts, cut to the default
  # limit. Generating, comparing and drawing take about 2 s in a release
  # build; the limit holds the layout to about a second whatever the
  # models, so 120 s leave room for a sanitizer build (several times
  # slower) on a busy machine, and still fail a layout that is not
  # bounded, which takes minutes.
  vekzol_svg_test(compare_svg_of_100000_elements_is_cut_to_the_limit_and_laid_out_in_time
    EXIT 1 GENERATE 100000 MAX_NODES 500
    STDERR_FILE ${tool_expected}/generated-100000-svg.stderr
    -- compare --check-names --roots @WORK@/old.json @WORK@/new.json)
  set_tests_properties(
    tool.compare_svg_of_100000_elements_is_cut_to_the_limit_and_laid_out_in_time
    PROPERTIES TIMEOUT 120)

  # The HTML report in a real browser: headless Chromium driven through its
  # DevTools protocol (BrowserReport.py). Skipped, with a message, only
  # where chromium is not installed.
  # It runs on Debian's python3, which sees Debian's python3-websocket
  # (another python3 first on the PATH may not).
  find_program(VEKZOL_SYSTEM_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH)
  mark_as_advanced(VEKZOL_SYSTEM_PYTHON)
  set(browser_python ${Python3_EXECUTABLE})
  if(VEKZOL_SYSTEM_PYTHON)
    set(browser_python ${VEKZOL_SYSTEM_PYTHON})
  endif()
  add_test(NAME tool.html_report_works_in_a_browser
    COMMAND ${browser_python} ${CMAKE_CURRENT_SOURCE_DIR}/BrowserReport.py
      --tool $<TARGET_FILE:vekzol> --examples ${tool_examples}
      --work ${tool_work_root}/html_report_works_in_a_browser
      --screenshot ${PROJECT_BINARY_DIR}/html-report.png)
  set_tests_properties(tool.html_report_works_in_a_browser PROPERTIES
    LABELS browser TIMEOUT 60 SKIP_RETURN_CODE 77)
endif()

# Graphviz leaks what its `dot` layout makes for a cluster, which a
# comparison's drawing has (its legend); GraphvizLeaks.supp says why. The
# tests that lay out such a drawing in a sanitizer build run with it, and
# with the slow unwinder that its match needs.
if(VEKZOL_SANITIZE)
  set(cluster_layout_tests
    tool.compare_svg_of_the_example_is_the_picture_in_docs)
  if(Python3_Interpreter_FOUND)
    list(APPEND cluster_layout_tests
      tool.compare_svg_is_well_formed_and_draws_every_drawn_id
      tool.compare_svg_of_escaped_ids_is_well_formed_and_draws_them_as_they_read
      tool.compare_svg_of_100000_elements_is_cut_to_the_limit_and_laid_out_in_time
      tool.html_report_works_in_a_browser)
  endif()
  set_tests_properties(${cluster_layout_tests} PROPERTIES ENVIRONMENT
    "LSAN_OPTIONS=suppressions=${CMAKE_CURRENT_SOURCE_DIR}/GraphvizLeaks.supp:fast_unwind_on_malloc=0:print_suppressions=0")
endif()

# The drawing's pieces in process: the parts and their layering, the DOT
# and HTML escaping, the HTML page.
vekzol_add_test(NAME ToolDrawing_test LINK_SHARED SOURCES ToolDrawing_test.cpp)
if(TARGET ToolDrawing_test)
  target_link_libraries(ToolDrawing_test PRIVATE vekzol_cli)
endif()
