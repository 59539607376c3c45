#pragma once
// One line of the standard format behind its time: "OBJECT.behaviour(arguments)" or
// "OBJECT.attribute=value".

#include <optional>
#include <string>
#include <string_view>

#include "workbench/service/Record.h"

namespace kvx::formats::itron_standard {

struct Statement {
    std::string_view object;
    std::string_view verb;       // behaviour or attribute
    std::string_view arguments;  // in the brackets, or the value
    bool isAttribute = false;
};

// None: the text has another form.
std::optional<Statement> ParseStatement(std::string_view text);

// Name and arguments of the call that enterSVC and leaveSVC speak of. Where white space and comma
// were stripped, known calls tell them apart.
struct ServiceCall {
    std::string_view name;
    std::string_view arguments;
};
ServiceCall ParseServiceCall(std::string_view arguments);

// "name=value, name=value" of "name=value.name=value."
std::string ParseArguments(std::string_view arguments);

// Kind, state, target and name of what the statement says of its object. isHandler: what the object
// is.
void Interpret(const Statement& statement, bool isHandler, service::Record& record);

// For LineRules.
bool ReturnStaysBehindCall(std::string_view line, std::string_view before);

}  // namespace kvx::formats::itron_standard
