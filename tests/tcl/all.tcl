# Runs every tests/tcl/*.test in this interpreter and exits non-zero when a test failed or
# a test file stopped early. The last line is "tcl: N passed, N failed, N skipped".
package require tcltest 2
namespace import ::tcltest::*
configure -testdir [file dirname [file normalize [info script]]] -singleproc 1 {*}$argv

# In one process the counts add up over the files; the final call of cleanupTests (from
# runAllTests) holds the totals, each file's own call marks that the file reached its end.
set ::totals {Passed 0 Failed 0 Skipped 0 Files 0}
proc ::tcltest::cleanupTestsHook {} {
    variable numTests
    if {[uplevel 1 {set calledFromAllFile}]} {
        foreach key {Passed Failed Skipped} { dict set ::totals $key $numTests($key) }
    } else {
        dict incr ::totals Files
    }
}
runAllTests

set expected_files [llength [::tcltest::GetMatchingFiles]]
set failed [dict get $::totals Failed]
if {[dict get $::totals Files] != $expected_files} {
    puts "tcl: [expr {$expected_files - [dict get $::totals Files]}] test file(s) stopped before their end"
    incr failed
}
puts "tcl: [dict get $::totals Passed] passed, $failed failed, [dict get $::totals Skipped] skipped"
exit [expr {$failed > 0}]
