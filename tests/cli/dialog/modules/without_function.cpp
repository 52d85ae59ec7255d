// A library without the function for which a module is loaded.
extern "C" int KrnqbOfSomethingElse() noexcept;

int KrnqbOfSomethingElse() noexcept {
  return 0;
}
