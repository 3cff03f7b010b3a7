// option_xml.h - options as elements of XML.
#pragma once
#include <string>
#include "options/option_tables.h"

// A text with the characters that XML gives a meaning replaced.
std::string xml_text(std::string const &plain);
// The element that describes an option: names, parameter, words.
std::string xml_option_description(option_id id);
// The element of an option that is set; a null argument is none.
std::string xml_option_setting(option_id id, std::string const *argument);
