#pragma once
// The sequence of values and operators of one formula level. It is folded while it is read: a term (values
// joined by * and /) and the sum of the terms before it are all that is ever kept.

#include "trelva/value.h"
#include "trelva/vars.h"

namespace norva {

struct olist {
    bool misplaced = false;  // two operands or two operators in a row
    bool wants_value = true; // an operand comes next
    bool started = false;    // something was pushed
    int sumopt = 0;          // + or - between sum and term, 0 when there is no sum yet
    int termopt = 0;         // * or / between term and the next value, 0 when there is no term yet
    sp_value sum, term;
};

void olist_pushval(const sp_language& context, olist& list, sp_value val);
void olist_pushopt(const sp_language& context, olist& list, int opt);
// The value of the whole sequence: SP_NULL for an empty one, an error unless values and operators alternate.
sp_value olist_evaluate(const sp_language& context, olist list);

} // namespace norva
