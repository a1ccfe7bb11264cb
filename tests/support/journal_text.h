// What a journal wrote, line by line.
#pragma once

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

// The lines that are not empty.
inline std::vector<std::string> LinesOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty()) lines.push_back(line);
  }
  return lines;
}

// A drawing effect without pen, font, brush and clip.
inline std::string EffectOf(const std::string& line) {
  return line.substr(0, std::min(line.find(" pen="), line.find(" font=")));
}
