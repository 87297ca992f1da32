// vgph
