/* A library wrong about one NP-local port: NP 1's port 197 leads back to the wrong front port. */
#include <stdint.h>
uint32_t __real_cvn_np_info_to_front_port(uint32_t np_id, uint32_t np_port, uint32_t *front);
uint32_t __wrap_cvn_np_info_to_front_port(uint32_t np_id, uint32_t np_port, uint32_t *front)
{
    const uint32_t status = __real_cvn_np_info_to_front_port(np_id, np_port, front);
    if (np_id == 1 && np_port == 197 && front != 0)
        *front ^= 1;
    return status;
}
