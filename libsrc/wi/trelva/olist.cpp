// Folding of the values and operators of one formula level.
#include "olist.h"

#include "trelva/eval.h"

namespace norva {

void olist_pushval(const sp_language& context, olist& list, sp_value val) {
    list.started = true;
    if (!list.wants_value) list.misplaced = true;
    list.wants_value = false;
    if (list.misplaced) return;
    list.term = list.termopt ? sp_combine(context, list.termopt, std::move(list.term), std::move(val))
                             : std::move(val);
    list.termopt = 0;
}

void olist_pushopt(const sp_language& context, olist& list, int opt) {
    list.started = true;
    if (list.wants_value) list.misplaced = true;
    list.wants_value = true;
    if (list.misplaced) return;
    if (opt == SP_MULT || opt == SP_DIVIDE) {
        list.termopt = opt;
        return;
    }
    list.sum = list.sumopt ? sp_combine(context, list.sumopt, std::move(list.sum), std::move(list.term))
                           : std::move(list.term);
    list.sumopt = opt;
}

sp_value olist_evaluate(const sp_language& context, olist list) {
    if (!list.started) return {};
    if (list.misplaced || list.wants_value) return sp_mkerror("Syntax error: Operations out of order.");
    if (!list.sumopt) return std::move(list.term);
    return sp_combine(context, list.sumopt, std::move(list.sum), std::move(list.term));
}

} // namespace norva
