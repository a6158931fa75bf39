// The texts of the forms that no control record brings: names of fields which no caption on the screen names,
// for assistive technology and as tool tips, and the signs between two fields. The forms themselves hold
// none.
#pragma once

#include <string_view>

class QWidget;

namespace loader {

// Gives the widgets of a form what the table says of them; `name` is the form's, "frmParamLoader.pageMail".
void GiveFormTexts(QWidget& form, std::string_view name);

} // namespace loader
