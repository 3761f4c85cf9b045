# Package index of ::velcora::device, the device catalogue's Tcl commands.
#
# This file lies beside libvelcora_ddb in the build tree (<build>/ddb/) and, installed, in
# <prefix>/<libdir>/tcltk/velcora_ddb/, two levels below the installed library. tclsh finds
# it through auto_path: Debian's tclsh searches /usr/local/lib/tcltk and its subdirectories
# by itself; for another place name the directory above this file's in TCLLIBPATH, e.g.
#     TCLLIBPATH=<prefix>/lib/tcltk tclsh
#     TCLLIBPATH=<build>/ddb tclsh
# and then: package require ::velcora::device
package ifneeded ::velcora::device 1.0 [list apply {{dir} {
    set name libvelcora_ddb[info sharedlibextension]
    foreach candidate [list [file join $dir $name] [file join $dir .. .. $name]] {
        if {[file exists $candidate]} {
            load [file normalize $candidate] Ddb
            return
        }
    }
    error "::velcora::device: $name is neither in $dir nor two directories above it"
}} $dir]
