#include "com/typelib/idl_writer.h"

#include <algorithm>
#include <ostream>
#include <string>

#include "com/server/identifiers.h"
#include "platform/collection.h"

namespace QuorCom {

using QuorDataLib::Argument;
using QuorDataLib::ClassInfo;
using QuorDataLib::Member;
using QuorDataLib::TypeInfo;
using QuorDataLib::ValueType;

namespace {

class Writer {
 public:
  Writer(std::ostream& out, const Library& library) : out_(out), library_(library) {}

  void write() {
    out_ << "// Made of the member tables (make idl); what is changed here is lost.\n\n"
            "import \"automation.idl\";\n\n"
            "[\n  uuid("
         << libraryId(library_.name) << "),\n  version(1.0),\n  helpstring("
         << quoted(library_.summary) << ")\n]\nlibrary " << library_.name << " {\n";
    for (const ClassInfo* const info : library_.interfaces) {
      out_ << "  dispinterface _" << info->name << ";\n";
    }
    for (const ClassInfo* const info : library_.interfaces) writeInterface(*info);
    for (const PublicClass& each : library_.classes) writeClass(each);
    out_ << "}\n";
  }

 private:
  static std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
      if (c == '"' || c == '\\') result += '\\';
      result += c;
    }
    return result + "\"";
  }

  [[nodiscard]] std::string objectType(std::string_view className) const {
    if (className == QuorDataLib::Enumerator::kClassName) return "IUnknown*";
    const bool known = std::ranges::any_of(
        library_.interfaces, [&](const ClassInfo* info) { return info->name == className; });
    return known ? "_" + std::string(className) + "*" : "IDispatch*";
  }

  [[nodiscard]] std::string typeText(const TypeInfo& type) const {
    switch (type.type) {
      case ValueType::Boolean:
        return "VARIANT_BOOL";
      case ValueType::Integer:
        return "short";
      case ValueType::Long:
        return "long";
      case ValueType::Double:
        return "double";
      case ValueType::Currency:
        return "CURRENCY";
      case ValueType::Date:
        return "DATE";
      case ValueType::Text:
        return "BSTR";
      case ValueType::Object:
        return objectType(type.className);
      case ValueType::Empty:
      case ValueType::Null:
        break;
    }
    return "VARIANT";
  }

  [[nodiscard]] std::string argumentText(const Argument& argument) const {
    const std::string type = typeText(argument.type);
    return (argument.byReference ? "[in, out] " + type + "*" : "[in] " + type) + " " +
           std::string(argument.name);
  }

  static std::string_view kindText(const Member& member) {
    switch (member.kind) {
      case Member::Kind::Get:
        return ", propget";
      case Member::Kind::Put:
        return member.arguments.front().type.type == ValueType::Object ? ", propputref"
                                                                       : ", propput";
      case Member::Kind::Method:
        break;
    }
    return "";
  }

  void writeMember(const Member& member) {
    out_ << "    [id(" << member.number << ")" << kindText(member)
         << (member.number == QuorDataLib::kEnumeratorMember ? ", restricted" : "")
         << ", helpstring(" << quoted(member.summary) << ")]\n    "
         << (member.result ? typeText(*member.result) : "void") << " " << member.name << "(";
    const char* separator = "";
    for (const Argument& argument : member.arguments) {
      out_ << separator << argumentText(argument);
      separator = ", ";
    }
    out_ << ");\n";
  }

  void writeInterface(const ClassInfo& info) {
    out_ << "\n  [\n    uuid(" << interfaceId(library_.name, info.name) << "),\n    helpstring("
         << quoted(info.summary) << ")\n  ]\n  dispinterface _" << info.name
         << " {\n    properties:\n    methods:\n";
    for (const Member& member : info.members) writeMember(member);
    out_ << "  };\n";
  }

  void writeClass(const PublicClass& each) {
    out_ << "\n  [\n    uuid(" << classId(library_.name, each.info->name) << "),\n    helpstring("
         << quoted(each.info->summary) << ")\n  ]\n  coclass " << each.info->name
         << " {\n    [default] dispinterface _" << each.info->name << ";\n  };\n";
  }

  std::ostream& out_;
  const Library& library_;
};

}  // namespace

void writeIdl(std::ostream& out, const Library& library) { Writer(out, library).write(); }

}  // namespace QuorCom
