// gen
