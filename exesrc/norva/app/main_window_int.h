#pragma once
// What main_window.cpp and main_handlers.cpp share, and nobody else includes.

#include <string>

namespace norva {

extern std::string ehdr; // header text of the raw file, as the edit page shows it

void build_main_window();
void label_numflds(); // labels and decimals of the four fields, by user.pstyle
void show_window_values(const double units[4], const int samples[4]);
void show_edit_page(const std::string& text);

} // namespace norva
