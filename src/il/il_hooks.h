// il_hooks.h - observers of the IL while the parser completes it.
#pragma once
#include "il/il_fwd.h"

// One observer; each event does nothing unless overridden.
class IL_HOOKS {
public:
  virtual void expression(an_expr_node *)
  {
  }
  virtual void variable_initialization(a_variable *, unsigned char, void *)
  {
  }
  virtual void dynamic_variable_initialization(a_dynamic_init *)
  {
  }
  virtual void routine_definition(a_routine *)
  {
  }
  virtual void end_routine_definition(a_routine *)
  {
  }
  virtual void function_call(an_expr_node *)
  {
  }

protected:
  ~IL_HOOKS() = default;
};

// The active observers; passes each event to all of them.
class IL_HOOKS_CONTAINER {
public:
  void add(IL_HOOKS *hooks);
  void clear()
  {
    count = 0;
  }
  bool is_empty() const
  {
    return count == 0;
  }
  // A complete function body: its definition, every expression and initialization in it, its end.
  void body_completed(a_routine *routine, a_statement *body);

  IL_HOOKS *const *begin() const
  {
    return active;
  }
  IL_HOOKS *const *end() const
  {
    return active + count;
  }

private:
  static constexpr int max_hooks = 4;
  IL_HOOKS *active[max_hooks];
  int count = 0;
};
extern IL_HOOKS_CONTAINER il_hooks; // filled by the factories, before the first token
