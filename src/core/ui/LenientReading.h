// SPDX-License-Identifier: MIT
#pragma once

class QLineEdit;

namespace zorvekan {

// A number box keeps the lenient reading of its text (the leading number, 0 when
// none) but shows it: while the text is not a plain number ("1,3", "12abc") the box
// is tinted and its tooltip says how it is read ("read as 1").
void showLenientReading(QLineEdit* box);

// Shows the reading again after the text was set with the box's signals blocked.
void refreshLenientReading(QLineEdit* box);

// True while the box is tinted.
bool showsLenientReading(const QLineEdit* box);

} // namespace zorvekan
