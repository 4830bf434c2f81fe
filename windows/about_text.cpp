#include "windows/about_text.h"

#include <array>

namespace orvane {

namespace {

using Colour = std::array<int, 3>;  // red, green, blue
constexpr Colour dark = {51, 51, 51};
constexpr Colour gold = {255, 204, 51};
constexpr int barSteps = 20;  // from dark to gold

// Lines are broken here, for a label does not wrap.
constexpr std::string_view notice =
    "Copyright (c) 2026 The Orvane developers\n"
    "\n"
    "Permission is hereby granted, free of charge, to any\n"
    "person obtaining a copy of this software, to use, copy,\n"
    "modify, merge, publish, distribute, sublicense and sell\n"
    "copies of it, under the terms of the MIT License.\n"
    "\n"
    "The software is provided \"as is\", without warranty of\n"
    "any kind, express or implied. In no event shall the\n"
    "authors or copyright holders be liable for any claim,\n"
    "damages or other liability arising from its use.\n";

std::string Quoted(std::string_view value) {
    std::string quoted(1, '\'');
    quoted += value;
    quoted += '\'';
    return quoted;
}

std::string Quoted(const Colour& colour) {
    return Quoted(std::to_string(colour[0]) + "," + std::to_string(colour[1]) + "," +
                  std::to_string(colour[2]));
}

// A colour `step` steps on the way from dark to gold.
Colour Between(int step) {
    Colour colour = {};
    for (std::size_t part = 0; part < colour.size(); ++part) {
        colour[part] = dark[part] + (gold[part] - dark[part]) * step / barSteps;
    }
    return colour;
}

void AppendBarPiece(std::string& text, int step) {
    text += "<font color=" + Quoted(Between(step)) + ">_</font>";
}

}  // namespace

std::string AboutText(std::string_view version, std::string_view webSite) {
    std::string text = "<font face='Arial' size='12' color='255,255,255' align='center'>";
    text += "<font face='Arial Rounded MT Bold' size='26' style='b' color=" + Quoted(gold) +
            ">Orvane</font><br>";
    text += "version " + std::string(version) + "<p>";
    text += notice;
    text += "<br><font color='0,204,0' style='u'><a href=" + Quoted(webSite) +
            " color='153,255,102'>" + std::string(webSite) + "</a></font><p>";
    for (int step = 0; step < barSteps; ++step) AppendBarPiece(text, step);
    for (int step = barSteps; step >= 0; --step) AppendBarPiece(text, step);
    // Six empty lines are the pause before the text comes round again; the last one has no end of
    // its own.
    text += "<br><br><br><br><br><br></font>";
    return text;
}

}  // namespace orvane
