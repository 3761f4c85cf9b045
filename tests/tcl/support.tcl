# Shared by the Tcl tests: the package, capture of what commands print, an independent
# reading of the text catalogue and of the enumeration tables, and the part manager's own
# answers (through the tcl_expectations program).
package require tcltest 2
namespace import -force ::tcltest::*

package require ::velcora::device
namespace import -force ::velcora::device::*

namespace eval ::support {
    variable source_dir $::env(VELCORA_SOURCE_DIR)
    variable root $::env(VELCORA_ROOTDIR)
    variable captured {}
    variable catalogue {}
    variable tables {}
}
testConstraint unsanitized [expr {![info exists ::env(VELCORA_SANITIZE)]}]

# ---- what a command prints ------------------------------------------------------------------
proc ::support::transform {subcommand handle args} {
    switch -- $subcommand {
        initialize { return {initialize finalize write flush clear} }
        write { append ::support::captured [lindex $args 0]; return {} }
        default { return {} }
    }
}
# Runs `script` in the caller and returns {code result printed}.
proc printed {script} {
    set ::support::captured {}
    flush stdout
    chan push stdout ::support::transform
    set code [catch {uplevel 1 $script} result]
    chan pop stdout
    return [list $code $result [encoding convertfrom utf-8 $::support::captured]]
}
# The result of a call, or "ERROR(code): message".
proc outcome {script} {
    set code [catch {uplevel 1 $script} result]
    expr {$code ? "ERROR($code): $result" : $result}
}

# ---- the text catalogue, read here without the library ---------------------------------------
# Returns a dict kind -> name -> key -> list of values (quotes removed; resources under
# DEV_RESOURCES as a dict name -> count).
proc catalogue {} {
    if {$::support::catalogue ne {}} { return $::support::catalogue }
    set f [open [file join $::support::root h dev_part_manager_auto.part]]
    set data {}
    set kind {}
    set in_resources 0
    while {[gets $f line] >= 0} {
        if {[regexp {^(family|device|part)\t(\S+)$} $line -> kind name]} {
            set record [dict create]
        } elseif {$line eq "end"} {
            dict set data $kind $name $record
        } elseif {[regexp {^\tDEV_RESOURCES = \{$} $line]} {
            set in_resources 1
        } elseif {$in_resources && [regexp {^\t\t"([^"]*)" = (-?\d+)$} $line -> resource count]} {
            dict set record DEV_RESOURCES $resource $count
        } elseif {$in_resources && $line eq "\t\}"} {
            set in_resources 0
        } elseif {[regexp {^\t([A-Z_0-9]+) = "?([^"]*)"?$} $line -> key value]} {
            dict lappend record $key $value
        }
    }
    close $f
    set ::support::catalogue $data
}
proc record {kind name} { dict get [catalogue] $kind $name }
# The first value of a key ("" when absent) and whether a record lists a trait.
proc field {kind name key} {
    set record [record $kind $name]
    expr {[dict exists $record $key] ? [lindex [dict get $record $key] 0] : ""}
}
proc has_trait {kind name trait} {
    set record [record $kind $name]
    expr {[dict exists $record TRAITS] && $trait in [dict get $record TRAITS]}
}

# ---- enumeration tables, read from their definitions -----------------------------------------
# Returns a dict debug -> user of host/tables/<stem>.def.
proc user_strings {stem} {
    if {[dict exists $::support::tables $stem]} { return [dict get $::support::tables $stem] }
    set f [open [file join $::support::source_dir host tables $stem.def]]
    set map {}
    foreach line [split [read $f] \n] {
        if {[regexp {^DSTR_MEMBER\(\w+, \d+, "([^"]*)", "([^"]*)"} $line -> debug user]} {
            dict set map $debug $user
        }
    }
    close $f
    dict set ::support::tables $stem $map
    return $map
}
proc user_string {stem debug} { dict get [user_strings $stem] $debug }

# ---- the part manager's answers --------------------------------------------------------------
# Asks tcl_expectations each question (a list of lines) and returns its answers in order.
proc expectations {questions} {
    set answers [exec -ignorestderr $::env(VELCORA_TCL_EXPECTATIONS) << [join $questions \n]]
    split $answers \n
}
