// wi/toolkit
