// The "Solver" entries and the self-check line of a finished run.
#include "app/solver_choice.h"

#include <QActionGroup>
#include <QMenu>
#include <QSettings>

#include "simulate/solution_check.h"

namespace galeris {
namespace {

constexpr const char* kSolverKey = "Simulate/Solver";

}  // namespace

void AddSolverMenu(QMenu* simulate, SimRun& run) {
  QMenu* solver = simulate->addMenu("Solver");
  solver->setObjectName("mnuSolver");
  auto* group = new QActionGroup(solver);
  const bool newton = QSettings("Galeris", "Galeris").value(kSolverKey).toString() == "newton";
  run.Method = newton ? SolverMethod::Newton : SolverMethod::HardyCross;
  const struct {
    const char* name;
    const char* caption;
    SolverMethod method;
    const char* setting;
  } kChoices[] = {{"mnuSolverHardyCross", "Hardy Cross", SolverMethod::HardyCross, "hardy-cross"},
                  {"mnuSolverNewton", "Newton", SolverMethod::Newton, "newton"}};
  for (const auto& choice : kChoices) {
    QAction* action = solver->addAction(choice.caption);
    action->setObjectName(choice.name);
    action->setCheckable(true);
    action->setChecked(run.Method == choice.method);
    group->addAction(action);
    QObject::connect(action, &QAction::triggered, solver, [&run, choice] {
      run.Method = choice.method;
      QSettings("Galeris", "Galeris").setValue(kSolverKey, choice.setting);
    });
  }
}

QString SolutionCheckLine(const SimRun& run) {
  if (!run.Check.Done) return {};
  return QString::fromStdString("Self-check : " + SolutionCheckText(run.Check));
}

}  // namespace galeris
