// The variable library and the error text of a context.
#include "trelva/vars.h"

#include "zuvsys/basicstr.h"

#include <array>

namespace norva {

namespace {

constexpr std::size_t npos = static_cast<std::size_t>(-1);

// The constants as they are stored: short decimals, not the full precision.
struct constant {
    const char* name;
    double value;
    const char* desc;
};
constexpr std::array constants = {
    constant{"PI", 3.141592654, "Value of PI = 3.141592654"},
    constant{"TWOPI", 6.283185308, "2*PI = 6.283185308"},
    constant{"C", 299792500.0, "Speed of Light (m/s)"},
};

std::string folded(std::string_view name) {
    std::string key(name);
    for (char& c : key) c = static_cast<char>(toupperx(static_cast<unsigned char>(c)));
    return key;
}

void append(sp_vlib& vlib, sp_var var) {
    vlib.index.emplace(folded(var.name), vlib.vars.size());
    vlib.vars.push_back(std::move(var));
}

// The library, with the constants in it.
sp_vlib& sp_init_vlib(sp_language& context) {
    if (!context.vlib) {
        context.vlib = std::make_unique<sp_vlib>();
        for (const constant& c : constants)
            append(*context.vlib, {0, c.name, c.desc, std::make_unique<sp_value>(sp_mkscaler(c.value))});
    }
    return *context.vlib;
}

std::size_t sp_findindx(const sp_vlib& vlib, std::string_view name) {
    auto at = vlib.index.find(folded(name));
    return at == vlib.index.end() ? npos : at->second;
}

sp_var* find(sp_language& context, std::string_view name) {
    sp_vlib& vlib = sp_init_vlib(context);
    std::size_t i = sp_findindx(vlib, name);
    return i == npos ? nullptr : &vlib.vars[i];
}

// Why a value of class `itype` may not replace one of class `had`; empty when it may.
const char* refusal(int itype, int had) {
    if (itype == had || itype == 0) return "";
    if (had == 0) return "Cannot redefine variable provided by program.";
    return itype == 2 ? "" : "Variable is protected by system.";
}

} // namespace

void sp_err_add(sp_language& context, std::string_view err) {
    context.errstr.append(err).append("\n");
}

std::string sp_err_get(const sp_language& context) {
    return context.errstr.empty() ? " " : context.errstr;
}

void sp_err_flush(sp_language& context) {
    context.errstr = {};
}

std::string sp_var_putval(sp_language& context, std::string_view name, sp_value val, int type) {
    int itype = type == 0 || type == 2 ? type : 1;
    sp_var* var = find(context, name);
    if (!var) {
        append(*context.vlib, {itype, std::string(name), "", std::make_unique<sp_value>(std::move(val))});
        return "";
    }
    std::string why = refusal(itype, var->type);
    if (why.empty()) {
        *var->val = std::move(val);
        var->type = itype;
    }
    return why;
}

const sp_value& sp_var_getval(sp_language& context, std::string_view name) {
    static const sp_value none;
    const sp_var* var = find(context, name);
    return var ? *var->val : none;
}

void sp_var_putdesc(sp_language& context, std::string_view name, std::string_view desc) {
    if (sp_var* var = find(context, name)) var->desc = desc;
}

std::string sp_var_getdesc(sp_language& context, std::string_view name) {
    const sp_var* var = find(context, name);
    return var && !var->desc.empty() ? var->desc : " ";
}

int sp_var_isvar(sp_language& context, std::string_view name) {
    return find(context, name) != nullptr;
}

std::optional<std::string> sp_var_search(sp_language& context, int vartype, int memtype, int ipos) {
    for (const sp_var& var : sp_init_vlib(context).vars)
        if (var.type == memtype && var.val->type == vartype && ipos-- == 0) return var.name;
    return std::nullopt;
}

void sp_var_flush(sp_language& context) {
    auto kept = std::make_unique<sp_vlib>();
    for (sp_var& var : sp_init_vlib(context).vars)
        if (var.type == 0) append(*kept, std::move(var));
    context.vlib = std::move(kept);
}

void sp_var_freelib(sp_language& context) {
    context.vlib.reset();
}

} // namespace norva
