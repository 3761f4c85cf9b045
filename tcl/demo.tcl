# A short tour of the Tcl package ::velcora::device on the bundled installation, printed as
# a user at the tclsh prompt would see it: each command after the prompt "% ", then what it
# printed and its result. `make run` runs it; by hand:
#     TCLLIBPATH=build/release/ddb tclsh tcl/demo.tcl

proc say {text} { puts "# $text" }

# Runs `command` at global level as the prompt would, and shows its result or its error.
proc show {command} {
    puts "% $command"
    flush stdout
    if {[catch {uplevel #0 $command} result]} {
        puts $result
    } elseif {$result ne ""} {
        puts $result
    }
    puts ""
}

say "Load the package and bring its commands into the global namespace."
show {package require ::velcora::device}
show {namespace import ::velcora::device::*}

say "The families you can compile for (-all adds the families without compiler support)."
show {get_family_list}

say "What a family offers: devices, packages, speed grades, pin counts and features."
show {report_family_info {Corvane II}}

say "Parts of a family, filtered by package, pin count and speed grade."
show {get_part_list -family {Corvane II} -package FBGA -pin_count 484 -speed_grade 6}

say "Everything about one part, then single fields of it."
show {report_part_info CV2E025F484C6}
show {get_part_info CV2E025F484C6 -device -package -pin_count -speed_grade -temperature_grade}

say "Temperatures a part may be used at (degrees Celsius)."
show {get_temperature_option -default_max CV2E025F484C6}
show {get_temperature_option -list_min CV2E025F484C6}

say "Trait tests: is a feature supported?"
show {test_family_trait_of -family {Corvane II} -trait FITTER_ECO}
show {test_part_trait_of -trait LEAD_FREE CV2E025F484C6}

say "Options may be shortened while they stay unambiguous; -help shows a command's usage."
show {get_part_info -pi CV2E025F484C6}
show {get_temperature_option -help}

say "A name the catalogue does not know."
show {report_part_info CV2E999F484C6}
