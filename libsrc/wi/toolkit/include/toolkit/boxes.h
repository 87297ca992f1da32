#pragma once
// File select, and the boxes that pop up: file, edit, message and yes-no box.
//
// A box is no part of its parent's layout and takes no room there; the parent may be empty. Popping up
// returns at once, and the answer comes by callback. wi_on pops a box up.

#include "toolkit/wi.h"

namespace norva {

// --- File select: a string field and an "Open" button over a file box. filter: a mask such as "*.jou*", with
// or without a directory.
wi_obj* wi_mk_filesel(wi_obj* parent, const std::string& label, const std::string& filter, double split);
std::string wi_filesel_getstr(const wi_obj* wo);
void wi_filesel_putstr(wi_obj* wo, const std::string& str);
// Where the box starts: a directory, a file name (its directory counts), or a mask, which also becomes the
// filter: "data/*.pf*".
void wi_filesel_setdir(wi_obj* wo, const std::string& dir);
void wi_filesel_label(wi_obj* wo, const std::string& label);
void wi_filesel_split(wi_obj* wo, double split);
void wi_filesel_editable(wi_obj* wo, int flag); // 0: field and button do nothing
// Called when a file was chosen, or on the return key in the field.
void wi_filesel_chng_cb(wi_obj* wo, wi_cb cb, int tag);
// A name with a directory part stays as it is; any other is put into the default data directory.
void wi_filesel_checkdir(const std::string& name, std::string& out);

// --- File box. The callback runs when a file was chosen; a cancel calls nothing.
wi_obj* wi_mk_filebox(wi_obj* parent, const std::string& title, const std::string& filter, wi_cb accept_cb,
                      int tag);
void wi_filebox_popup(wi_obj* wo);
std::string wi_filebox_getname(const wi_obj* wo);
void wi_filebox_setdir(wi_obj* wo, const std::string& dir); // as wi_filesel_setdir
void wi_filebox_setmsg(wi_obj* wo, const std::string& title);

// --- Edit box: asks for one line of text in a window of its own, with "OK" and "Cancel".
wi_obj* wi_mk_editbox(wi_obj* parent, const std::string& msg, wi_cb accept_cb, int tag);
void wi_editbox_popup(wi_obj* wo);
std::string wi_editbox_getstr(const wi_obj* wo);
void wi_editbox_putstr(wi_obj* wo, const std::string& str);
void wi_editbox_setmsg(wi_obj* wo, const std::string& msg);

// --- Message box, titled "Message:".
wi_obj* wi_mk_msgbox(wi_obj* parent, const std::string& msg);
void wi_msgbox_setmsg(wi_obj* wo, const std::string& msg);
void wi_msgbox_popup(wi_obj* wo);
void wi_popmsg(const std::string& msg); // the same without an object

// --- Yes-no box, titled "Question:".
wi_obj* wi_mk_ynbox(wi_obj* parent, const std::string& question, wi_cb yes_cb, int yes_tag, wi_cb no_cb,
                    int no_tag);
void wi_ynbox_setquestion(wi_obj* wo, const std::string& question);
void wi_ynbox_popup(wi_obj* wo);

} // namespace norva
