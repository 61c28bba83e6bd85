#include "fftw.h"

#include <optional>

#include "loader.h"
#include "system.h"

namespace bench {
namespace {

void* openIfPresent(const std::string& file) {
  try {
    return api::openLibrary(file);
  } catch (const std::runtime_error&) {
    return nullptr;
  }
}

template <class T>
std::optional<Fftw<T>> load() {
  void* const library = openIfPresent(Fftw<T>::file());
  if (!library) return {};
  bool complete = true;
  const auto find = [&](const char* name, auto& pointer) {
    const std::string symbol = std::string(sizeof(T) == 4 ? "fftwf_" : "fftw_") + name;
    void* const address = api::findSymbol(library, symbol);
    pointer = reinterpret_cast<std::remove_reference_t<decltype(pointer)>>(address);
    complete = complete && address;
  };
  Fftw<T> fftw;
  find("plan_dft_1d", fftw.planDft);
  find("plan_dft_r2c_1d", fftw.planR2c);
  find("plan_dft_c2r_1d", fftw.planC2r);
  find("plan_r2r_1d", fftw.planR2r);
  find("plan_many_dft", fftw.planManyDft);
  find("plan_many_dft_r2c", fftw.planManyR2c);
  find("plan_many_dft_c2r", fftw.planManyC2r);
  find("plan_many_r2r", fftw.planManyR2r);
  find("execute", fftw.execute);
  find("destroy_plan", fftw.destroy);
  find("malloc", fftw.allocate);
  find("free", fftw.free);
  find("version", fftw.version);
  return complete ? std::optional(fftw) : std::nullopt;
}

template <class T>
const std::optional<Fftw<T>>& loaded() {
  static const std::optional<Fftw<T>> kFftw = load<T>();
  return kFftw;
}

}  // namespace

template <class T>
std::string Fftw<T>::file() {
  return libraryFile(sizeof(T) == 4 ? "fftw3f" : "fftw3", 3);
}

template <class T>
bool Fftw<T>::isPresent() {
  return loaded<T>().has_value();
}

template <class T>
const Fftw<T>& Fftw<T>::get() {
  return loaded<T>().value();
}

template struct Fftw<float>;
template struct Fftw<double>;

}  // namespace bench
