/* A library that says it is Gurobi and has nothing else of it. */
__attribute__((visibility("default"))) void GRBversion(int* major, int* minor, int* technical) {
  *major = VERSION_MAJOR;
  *minor = 0;
  *technical = 3;
}
