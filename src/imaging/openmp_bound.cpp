#include "imaging/openmp_bound.h"

// As the OpenMP standard declares them; the compiler's <omp.h> is not there for every compiler we build with.
extern "C" {
int omp_get_max_threads(void);
void omp_set_num_threads(int count);
}

namespace ml::imaging {

OpenMpBound::OpenMpBound() : before_(omp_get_max_threads()) { omp_set_num_threads(1); }
OpenMpBound::~OpenMpBound() { omp_set_num_threads(before_); }

}  // namespace ml::imaging
