// option_xml.cpp - options as elements of XML.
// Uses:    xml_option_def, the beginning of each element.
#include "options/option_xml.h"
#include "options/option_obj.h"

std::string xml_text(std::string const &plain)
{
  std::string result;
  for (char c : plain) {
    switch (c) {
    case '&': result += "&amp;"; break;
    case '<': result += "&lt;"; break;
    case '>': result += "&gt;"; break;
    case '"': result += "&quot;"; break;
    default: result += c;
    }
  }
  return result;
}

static std::string element(char const *name, std::string const &content)
{
  return std::string("<") + name + '>' + content + "</" + name + '>';
}

static std::string other_names(an_option_definition const &option)
{
  std::string names;
  for (char const *const *name = option.other_names; *name != nullptr; name++) {
    names += element("name", option_obj::rot13(*name));
  }
  return names;
}

static std::string parameter(an_option_definition const &option)
{
  if (option.parameter_name == nullptr) return {};
  std::string text = std::string("<parameter optional=\"") + (option.optional ? '1' : '0') + "\">" +
                     element("name", option_obj::rot13(option.parameter_name)) +
                     element("help", option_obj::rot13(option.help_text));
  for (an_item const *item = option.item_list; item && item->text; item++) {
    text += "<word value=\"" + std::to_string(item->value) + "\">" + option_obj::rot13(item->text) +
            "</word>";
  }
  return text + "</parameter>";
}

std::string xml_option_description(option_id id)
{
  an_option_definition const &option = option_definitions[id];
  return option_obj::rot13(xml_option_def[id]) + other_names(option) + parameter(option) +
         "</option>";
}

std::string xml_option_setting(option_id id, std::string const *argument)
{
  std::string text = option_obj::rot13(xml_option_def[id]);
  if (argument != nullptr) text += element("value", xml_text(*argument));
  return text + "</option>";
}
