#include "tests/plots/scripted_host.h"

ScriptedHost& TheHost() {
  static ScriptedHost host;
  return host;
}

void chromatogram::AddRef() const { ++TheHost().references; }
void chromatogram::Release() const { --TheHost().references; }

bool CalibPool::PointIsExcluded(component*, int point) {
  TheHost().Call();
  return TheHost().points.at(point).excluded;
}
double CalibPool::PointToX(component*, int point) {
  TheHost().Call();
  return TheHost().points.at(point).x;
}
double CalibPool::PointToY(component*, int point) {
  TheHost().Call();
  return TheHost().points.at(point).y;
}
double CalibPool::XtoYtab(component*, double x) {
  TheHost().Call();
  return TheHost().curve(x);
}
double CalibPool::XtoStatWeight(component*, double x) {
  TheHost().Call();
  return x;
}
