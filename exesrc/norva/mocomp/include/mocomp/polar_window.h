#pragma once
// The window in which the user completes the geometry of a turntable measurement and starts a polar formatted
// image.

namespace norva {

struct wi_obj;

// What the window asks of the application above it.
struct polar_calls {
    // Opens the image window on the chosen window of data; images are polar formatted while plr_kw_stat().
    void (*open_image)() = nullptr;
};
extern polar_calls polar_hooks;

void plr_kw_reset(); // at start, before any window
int plr_kw_stat();   // 1 while the window is on
void plr_kw_init();  // builds the window when there is none, and shows it
void plr_kw_on();
void plr_kw_off();
void pkw_putvals(); // record to fields; a zero leaves what the field shows

// Greys "Image" while no image can be opened.
void plr_kw_refresh(bool image_possible);

// Handler of the buttons: 0 cancel, 1 image, 3 save the values as keywords of the raw file (by the program
// "addkw" beside this one). 2 shows the fields that the geometry has.
void plr_kw_cb(wi_obj* wo, int tag);

} // namespace norva
