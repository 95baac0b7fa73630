// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace zorvekan {

// Lenient numeric input, as every text box of the program reads its text:
// the leading numeric part, 0 when there is none. Blanks, tabs and line feeds
// are skipped wherever they stand ("1 000" is 1000); a sign, digits, one decimal
// point and an exponent (E or D) are taken; "&H1F" and "&O17" are hexadecimal
// and octal. "12abc" gives 12, "" and "abc" give 0.
// A number beyond the double range is an overflow fault.
double Val(std::string_view text);

// True when Val reads the whole text (blanks aside) as its number, so the box holds
// exactly what it shows; false for "1,3" (read as 1), "12abc" or "abc". A blank
// text is whole: it is an empty box.
bool ValTakesWholeText(std::string_view text);

} // namespace zorvekan
