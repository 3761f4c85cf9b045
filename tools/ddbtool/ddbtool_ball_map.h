// The ball map of a package as SVG: one ball per pin at its place, coloured by kind (user
// I/O by I/O bank, power, ground, configuration, transceiver, other dedicated, no-connect),
// with the ball names, a legend and the part's name as title.
//
// Places: ball names of letters and a number ("AB12") give the row (rows ordered as the
// names run: A to Y, then AA, AB, ...) and the column; packages with leads, whose pins are
// numbered, are drawn at their pins' X_UM/Y_UM positions; pins with neither are set out in
// rows by pin id.
#ifndef VELCORA_TOOLS_DDBTOOL_BALL_MAP_H
#define VELCORA_TOOLS_DDBTOOL_BALL_MAP_H

#include <string>

#include "dev_pkg_info.h"

bool ddbtool_write_ball_map(const DEV_PKG_INFO_BODY& package, const std::string& title, const std::string& path);

#endif
