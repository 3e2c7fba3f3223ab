#pragma once

#include <string>
#include <string_view>

#include "platform/date_time.h"

/// Values as the program's files hold them. Reading never fails: a text that is not a value of its kind is 0, no or the
/// zero date.
namespace bellmark {

double StoredNumber(std::string_view text);  ///< finite
/// A gain that the FWD works with: four decimals, as the set-up shows it and the files of the run keep it. More would
/// make a resumed run compute with another gain than one sitting.
double StoredGain(std::string_view text);
int StoredWhole(std::string_view text, int least, int most);  ///< rounded half to even, brought into the range
bool StoredBoolean(std::string_view text);                    ///< the word True, or a number other than 0
DateTime StoredDate(std::string_view text);

std::string BooleanText(bool value);  ///< "True" or "False"

}  // namespace bellmark
