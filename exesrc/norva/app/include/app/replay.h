#pragma once
// Going to a position of the journal. The position's state is computed again: the raw window is read from the
// file, the corrections in force at the position are applied to it in order, the window of data is cut to the
// step's, and the step's window is driven through the handlers that its buttons use. Meanwhile `managing` is
// 1 and nothing is journaled.

namespace norva {

struct wi_obj;

// mng_jrnl (journal/journal.h) is this function.
void replay_journal(wi_obj* wo, int tag);

} // namespace norva
