// The pointer in the Doppler profile picture: the control box and centring.
#include "doppler_int.h"

#include "draw/overlays.h"
#include "profile_parts.h"
#include "state/run.h"

namespace norva {

void xdp_mouse(wi_obj*, int tag, int xpx, int ypx, int ibut) {
    if (msgwinon || pkswinon || !dpwinon || !dp.disp || tag != MOUSE_PRESS) return;
    float xpos, ypos;
    vg_xy_pos(*dp.disp, xpx, ypx, xpos, ypos);
    if (in_cbox(*dp.disp, xpos, ypos)) {
        control_journal(ibut);
        return;
    }
    if (ibut != LEFT_BUTTON || dp.m_mode != DP_MODE_CENTER || !dp.picture.frame) return;
    const _vgdataframe& dp_df = dp.picture.dp_df;
    if (!vg_inrect(dp_df.pltbox, xpos, ypos)) return;
    xdp_set_position(vg_x_val(dp_df, xpos));
    xdp_mocomp(0);
}

} // namespace norva
