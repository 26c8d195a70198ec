// A second opinion: what the AMPL library reads. Its trees are taken by giving it a table of operators that holds their
// numbers instead of functions.
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/reader_nl/plain.h"

extern "C" {
#include <nlp.h>
}
// The library's header calls many everyday words its own.
#undef exit
#undef filename
#undef real

// The library ends the process on some wrong files; in this program it throws instead.
extern "C" void mainexit_ASL(int code) { throw std::runtime_error(fmt::format("the library exits with {}", code)); }

namespace kavo::reader {

namespace {

constexpr int kOperators = 83;

int numberOf(const expr* e) {
  if (e->op == reinterpret_cast<efunc*>(f_OPNUM_ASL)) return static_cast<int>(KAVO_OP_NUMBER);
  return static_cast<int>(reinterpret_cast<std::intptr_t>(e->op));
}

class AmplReader {
 public:
  AmplReader() : asl(reinterpret_cast<ASL_fg*>(ASL_alloc(ASL_read_fg))) {
    for (std::intptr_t i = 0; i < kOperators; ++i) {
      operators_[i] = reinterpret_cast<efunc*>(i);  // NOLINT(performance-no-int-to-ptr): never followed
    }
  }
  ~AmplReader() {
    ASL* base = reinterpret_cast<ASL*>(asl);
    ASL_free(&base);
  }
  AmplReader(const AmplReader&) = delete;
  AmplReader& operator=(const AmplReader&) = delete;

  Plain read(const std::string& path) {
    FILE* file =
        jac0dim_ASL(reinterpret_cast<ASL*>(asl), const_cast<char*>(path.c_str()), static_cast<fint>(path.size()));
    upper_.resize(static_cast<std::size_t>(n_var) + 1);
    rowUpper_.resize(static_cast<std::size_t>(n_con) + 1);
    asl->i.Uvx_ = upper_.data();
    asl->i.Urhsx_ = rowUpper_.data();
    givenPrimal_.resize(static_cast<std::size_t>(n_var) + 1);
    givenDual_.resize(static_cast<std::size_t>(n_con) + 1);
    asl->i.havex0_ = givenPrimal_.data();
    asl->i.havepi0_ = givenDual_.data();
    asl->i.want_xpi0_ = 3;
    asl->I.r_ops_ = operators_;
    const int flags = ASL_return_read_err | ASL_allow_CLP | ASL_keep_all_suffixes | ASL_allow_missing_funcs;
    if (const int code = fg_read_ASL(reinterpret_cast<ASL*>(asl), file, flags); code != 0) {
      throw std::runtime_error(fmt::format("the library reports {}", code));
    }
    Plain p;
    for (int i = 0; i < n_var; ++i) p.bounds.emplace_back(LUv[i], upper_[static_cast<std::size_t>(i)]);
    p.discrete = nbv + niv + nlvbi + nlvci + nlvoi;
    for (int i = 0; i < n_con; ++i) p.rows.push_back(row(i));
    for (int i = 0; i < n_obj; ++i) p.objectives.push_back(objective(i));
    for (int i = 0; i < n_lcon; ++i) p.logical.push_back(text(asl->I.lcon_de_[i].e));
    const int shared = asl->i.comb_ + asl->i.comc_ + asl->i.como_;
    for (int i = 0; i < shared; ++i) p.defined.push_back(defined(cexps[i].e, cexps[i].L, cexps[i].nlin));
    for (int i = 0; i < asl->i.comc1_ + asl->i.como1_; ++i) {
      p.defined.push_back(defined(cexps1[i].e, cexps1[i].L, cexps1[i].nlin));
    }
    p.primal = start(X0, givenPrimal_, n_var);
    p.dual = start(pi0, givenDual_, n_con);
    for (int kind = 0; kind < 4; ++kind) addSuffixes(kind, p.suffixes);
    return p;
  }

 private:
  Plain::Row row(int i) {
    Plain::Row r{LUrhs[i], rowUpper_[static_cast<std::size_t>(i)], {}, "", -1};
    for (const cgrad* g = Cgrad[i]; g != nullptr; g = g->next) r.terms.emplace_back(g->varno, g->coef);
    std::sort(r.terms.begin(), r.terms.end());
    const expr* e = con_de[i].e;
    if (isNumber(e)) {
      r.lower -= value(e);
      r.upper -= value(e);
    } else {
      r.body = text(e);
    }
    if (cvar != nullptr) r.complements = cvar[i] - 1;
    return r;
  }

  Plain::Objective objective(int i) {
    Plain::Objective o{objtype[i], 0, {}, ""};
    for (const ograd* g = Ograd[i]; g != nullptr; g = g->next) o.terms.emplace_back(g->varno, g->coef);
    std::sort(o.terms.begin(), o.terms.end());
    const expr* e = obj_de[i].e;
    if (isNumber(e)) {
      o.constant = value(e);
    } else {
      o.body = text(e);
    }
    return o;
  }

  static bool isNumber(const expr* e) { return numberOf(e) == static_cast<int>(KAVO_OP_NUMBER); }
  static double value(const expr* e) { return reinterpret_cast<const expr_n*>(e)->v; }

  std::string defined(const expr* e, const linpart* linear, int count) {
    std::vector<std::string> parts;
    for (int k = 0; k < count; ++k) {
      const auto bytes = reinterpret_cast<const char*>(linear[k].v.rp) - reinterpret_cast<const char*>(&var_e[0].v);
      const auto variable = bytes / static_cast<std::ptrdiff_t>(sizeof(expr_v));
      if (linear[k].fac == 0) continue;
      parts.push_back(linear[k].fac == 1 ? name(variable) : fmt::format("n{} {} times", linear[k].fac, name(variable)));
    }
    if (parts.empty() || !isNumber(e) || value(e) != 0) parts.push_back(text(e));
    std::string sum;
    for (const std::string& part : parts) sum += (sum.empty() ? "" : " ") + part;
    if (parts.size() == 2) sum += " plus";
    if (parts.size() > 2) sum += fmt::format(" sum/{}", parts.size());
    return sum;
  }

  std::string text(const expr* root) {
    std::vector<const expr*> waiting{root};
    std::vector<std::string> words;  // from the last to the first
    while (!waiting.empty()) {
      const expr* e = waiting.back();
      waiting.pop_back();
      expand(e, words, waiting);
    }
    std::string text;
    std::reverse(words.begin(), words.end());
    for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
    return withPowers(text);
  }

  // Behind the variables the library has the defined ones.
  std::string name(std::ptrdiff_t variable) {
    return variable < n_var ? fmt::format("v{}", variable) : fmt::format("d{}", variable - n_var);
  }

  // Writes the last word of an expression and leaves its operands waiting, the last of them on top.
  void expand(const expr* e, std::vector<std::string>& words, std::vector<const expr*>& waiting) {
    const int op = numberOf(e);
    std::string word(operatorName(op));
    const std::size_t before = waiting.size();
    const auto ended = [&] { words.push_back(fmt::format("{}/{}", word, waiting.size() - before)); };
    // The library counts a power with a constant as an operator of one operand and keeps the constant aside.
    const bool power = static_cast<Operator>(op) == KAVO_OP_POWER_CONSTANT_EXPONENT ||
                       static_cast<Operator>(op) == KAVO_OP_POWER_CONSTANT_BASE;
    switch (power ? 2 : op_type_ASL[op]) {
      case 1:
        words.push_back(word), waiting.push_back(e->L.e);
        break;
      case 2:
        words.push_back(word), waiting.push_back(e->L.e), waiting.push_back(e->R.e);
        break;
      case 3:
        for (const de* d = reinterpret_cast<const expr_va*>(e)->L.d; d->e != nullptr; ++d) waiting.push_back(d->e);
        return ended();
      case 4:
        words.push_back(fmt::format("{}/{}", word, 2 * e->L.p->n));
        expand(e->R.e, words, waiting);  // a variable: one word
        for (int k = 2 * e->L.p->n - 2; k >= 0; --k) words.push_back(fmt::format("n{}", e->L.p->bs[k]));
        break;
      case 5: {
        const auto* choice = reinterpret_cast<const expr_if*>(e);
        words.push_back(word);
        for (const expr* operand : {choice->e, choice->T, choice->F}) waiting.push_back(operand);
        break;
      }
      case 6:
      case 11:
        for (expr** operand = e->L.ep; operand < e->R.ep; ++operand) waiting.push_back(*operand);
        return ended();
      case 7: {
        const auto* call = reinterpret_cast<const expr_f*>(e);
        word = call->fi->name;
        for (int k = 0; k < call->al->n; ++k) waiting.push_back(call->args[k]);
        return ended();
      }
      case 8:
        words.push_back(fmt::format("\"{}\"", reinterpret_cast<const expr_h*>(e)->sym));
        break;
      case 9:
        words.push_back(fmt::format("n{}", value(e)));
        break;
      case 10:
        words.push_back(name(reinterpret_cast<const expr_v*>(e) - var_e));
        break;
      default:
        throw std::runtime_error(fmt::format("operator {} is of an unknown type", op));
    }
  }

  static std::vector<double> start(const double* values, const std::vector<char>& given, int count) {
    std::vector<double> result(static_cast<std::size_t>(count), kUnknown);
    for (int i = 0; i < count && values != nullptr; ++i) {
      if (given[static_cast<std::size_t>(i)] != 0) result[static_cast<std::size_t>(i)] = values[i];
    }
    return result;
  }

  void addSuffixes(int kind, std::vector<Plain::Suffix>& suffixes) {
    const int rows = n_con;
    const int sizes[] = {n_var, rows, n_obj, 1};
    for (const SufDesc* s = asl->i.suffixes[kind]; s != nullptr; s = s->next) {
      Plain::Suffix suffix{kind, s->sufname, (s->kind & ASL_Sufkind_real) != 0, {}};
      for (int i = 0; i < sizes[kind]; ++i) {
        const double v = suffix.real ? s->u.r[i] : s->u.i[i];
        if (v != 0) suffix.values.emplace_back(i, v);
      }
      suffixes.push_back(suffix);
    }
  }

  ASL_fg* asl;  // NOLINT(readability-identifier-naming): the library's macros want this name
  efunc* operators_[kOperators];
  std::vector<double> upper_, rowUpper_;
  std::vector<char> givenPrimal_, givenDual_;  // whether each start value was in the file
};

}  // namespace

Plain readWithAmplLibrary(const std::string& path) { return AmplReader().read(path); }

}  // namespace kavo::reader
