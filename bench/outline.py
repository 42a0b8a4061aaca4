"""The blocks and keys of the generated model, as an outline.

A line is a block: its name, "[]" for an array of objects, "!" where its parent requires it, then its value keys; a line
that begins with "&" carries on the one above. What is nested stands two spaces deeper. A key is a number unless a kind
follows its name:

    :i integer    :b boolean    :s text     :u file name    :e one of several words    :y "yes"/"no"    :o "on"/"off"
    :N numbers    :I integers   :S texts    :R values for regions, objects that name theirs
    :*            the selector of a variant of the block
    :@STRINGDEF   the name of an item of that array; :R@SOILDEF stands for names of such items for regions

A key x with a companion x_file is given by one of the two.
"""

from __future__ import annotations

OUTLINE = """\
SETUP! simulation_name:s
  ORVAHPC
    PHYSICAL_PROPERTIES! gravity
    ORVAPLANE_2D!
      GEOMETRY! mesh_file:u
        INTERPOLATION method:e regions:R
        STRINGDEF[] name:s upstream_direction:e
        REGIONDEF[] name:s index:I
      HYDRAULICS!
        PARAMETER! minimum_water_depth fluid_density max_time_step fluid_viscosity safe_mode:e max_velocity CFL
        INITIAL! type:* file:u time regions:R
        FRICTION type:* default_friction regions:R
        TURBULENCE
          PARAMETER! turbulence_start turbulence_relax_par turbulence_diffusion turbulence_friction
          REYNOLDS_STRESS! closure_model:e constants:N
          INITIAL! type:* file:u time regions:R k_eps
          BOUNDARY
            STANDARD[] name:s string_name:@STRINGDEF type:* k k_file:u eps eps_file:u
          SOURCE[] name:s type:* k k_file:u eps eps_file:u region_name:@REGIONDEF sink:o
        BOUNDARY
          STANDARD[] name:s string_name:@STRINGDEF type:* slope discharge discharge_file:u poleni_factor poleni_a
            & poleni_b weir_elevation weir_elevation_file:u froude_number hqrelation_file:u wse wse_file:u
            & inflowPossible:b spec_discharge spec_discharge_file:u
          INTERNAL[] name:s string_name:@STRINGDEF type:* hqrelation_file:u collapse_time wse_file:u
            & spec_discharge_file:u input_duration type_downstream:e slope froude_number
          LINKED[] name:s string_name:@STRINGDEF string_name_downstream:@STRINGDEF type:* poleni_factor poleni_a
            & poleni_b weir_elevation weir_elevation_file:u hqrelation_file:u hqrelation2_file:u wse_up
            & wse_up_file:u time_lag wse_down type_downstream:e slope froude_number
        FLOOD tracking_timestep
        SOURCE[] name:s type:* data data_file:u region_name:@REGIONDEF sink:y
      TRACERS
        PARAMETER! tracers_start num_tracers:i tracer_relax_par tracer_diffusivity tracer_diffusivity_l
          & tracer_diffusivity_t tracer_turb_coef tracer_turb_coef_l tracer_turb_coef_t
        INITIAL! type:* file:u time regions:R tracers
        BOUNDARY
          STANDARD[] type:* name:s string_name:@STRINGDEF tracer1 tracer1_file:u tracer2 tracer2_file:u tracer3
            & tracer3_file:u tracer4 tracer4_file:u tracer5 tracer5_file:u
        SOURCE[] name:s type:* data1 data1_file:u data2 data2_file:u data3 data3_file:u data4 data4_file:u data5
          & data5_file:u region_name:@REGIONDEF sink:o
      TEMPERATURE
        PARAMETER fluid_specific_heat source_update_time temperature_start bed_thermal_thickness
          & bed_thermal_conductivity friction_heating_factor
        DIFFUSION diffusion_type:e maximum_relaxation_parameter molecular_diffusion longitudinal_diffusion_coeff
          & transversal_diffusion_coeff
        INITIAL! type:* file:u time regions:R
        BOUNDARY
          STANDARD[] name:s string_name:@STRINGDEF factor value value_file:u type:*
        SOURCE[] name:s region_name:@REGIONDEF air_temp air_temp_file:u wind_speed wind_speed_file:u
          & total_incoming_rad total_incoming_rad_file:u shade_factor shade_factor_file:u relative_humidity
          & relative_humidity_file:u bed_temp bed_temp_file:u sink:y type:*
      VEGETATION
        PARAMETER! veg_theta_critical_fact veg_strickler_fact uprooting_factor burial_factor plant_height_fact
          & plant_height_exp
        INITIAL! type:* file:u time regions:R
      MORPHOLOGY
        PARAMETER! morphodynamic_start sediment_porosity sediment_density bed_gradient_type:e morphodynamic_solver:e
          & upwind_factor
          ACTIVE_LAYER active_layer_type:e active_layer_thickness active_layer_factor
        INITIAL! type:* file:u time
        INCIPIENT_MOTION type_bed:e repose_angle
        BEDMATERIAL!
          PARAMETER correction_accuracy max_iteration:i
          GRAIN_CLASS! diameters:N
          MIXTURE[]! name:s volume_fraction:N
          INITIAL file:u time
          SOILDEF[] name:s
            LAYER[]! mixture_name:@MIXTURE z_rel
          SOIL_ASSIGNMENT default_soil:@SOILDEF regions:R@SOILDEF
          FIXED_BED type:* regions:R mesh_file:u
        BEDLOAD!
          FORMULA! type:* factor coefficient exponent theta_critical_approach:e critical_value min_critical_value
            & d30 d90
          DIRECTION
            LATERAL_SLOPE! factor exponent
            CURVATURE factor update_time
          BOUNDARY
            STANDARD[] name:s string_name:@STRINGDEF type:* reference_bed_elevation boundary_factor
              & sediment_discharge sediment_discharge_file:u mixture_name:@MIXTURE
            INTERNAL[] name:s string_name:@STRINGDEF type:* reference_bed_elevation collapse_time
            LINKED[] name:s string_name:@STRINGDEF string_name_downstream:@STRINGDEF type:* reference_bed_elevation
          SOURCE[] name:s type:* data data_file:u region_name:@REGIONDEF mixture_name:@MIXTURE sink:o
        GRAVITATIONAL_TRANSPORT critical_angle_dry critical_angle_wet update_time min_bed_change max_bed_change_rate
        SUSLOAD
          PARAMETER! suspended_relax_par suspended_diffusivity suspended_diffusivity_l suspended_diffusivity_t
            & suspended_turb_coef suspended_turb_coef_l suspended_turb_coef_t suspended_beta_factor
          SETTLING_VELOCITY closure_model:e constants:N
          SHEAR_PARTITION default_friction_susp regions:R
          EROSION_RATE closure_model:e constants:N
          DEPOSITION_RATE closure_model:e constants:N
          INITIAL! type:* file:u regions:R concentration:N
          BOUNDARY
            STANDARD[] name:s string_name:@STRINGDEF type:* data1 data1_file:u
          SOURCE[] name:s type:* data1 data1_file:u region_name:@REGIONDEF sink:b
      MASSMOVEMENT regions:R
  ORVAMD multiregion:s
    ORVACHAIN_1D[] region_name:s
      GEOMETRY! cross_section_order:S dump_crosssections:y file:u type:*
      HYDRAULICS!
        BOUNDARY[]! c_abutments c_pier calculation_type:e contraction_factor embankement_slope file:u
          & gate_bottom_level gate_level gate_level_file:u max_momentum_flux name:s num_piers:i
          & number_of_iterations:i precision slope string:s type:* weir_bottom_level weir_level weir_level_file:u
          & weir_my width width_file:u zhyd_relaxation_tau zweir_fac_a zweir_fac_b
        FRICTION! default_friction grain_size_friction:o roughness_factor strickler_factor type:*
        INITIAL! WSE_out:y file:u q_out type:*
        INNER_BOUNDARY[] a1 a2 b1 b2 c_abutments c_pier calculation_type:e contraction_factor cross_section_name_1:s
          & cross_section_name_2:s ehead_reference_location:s embankement_slope gate_bottom_level gate_level
          & gate_level_file:u gate_my gate_size gate_size_file:u gate_type:e margin num_piers:i type:*
          & weir_bottom_level weir_level weir_level_file:u weir_my width width_file:u zweir_fac_a zweir_fac_b
        PARAMETER! minimum_water_depth riemann_solver:e simulation_scheme:e stretch_boundary_elem:o
          SECTION_COMPUTATION! internal_levees:b max_interval min_interval precision type:*
        SOURCE
          EXTERNAL_SOURCE[] contraction_coeff correction_coeff cross_section:s cross_sections:S file:u
            & momentum_factor momentum_sink:e name:s opening_width poleni side:e type:* weir_crest_height
            & weir_crest_length
      MORPHOLOGY
        BEDLOAD
          BOUNDARY[]! factor file:u mixture:s multiFile:y name:s string:s type:*
          FORMULA! alpha angle_of_repose bed_forms:e bedload_exponent bedload_factor bedload_formula:e
            & critical_shear_stress_calibration d30 d90 hiding_exponent local_slope:e power_law_a power_law_b
            & theta_critical theta_critical_approach:e theta_critical_hiding use_energy_slope:o
          PARAMETER! abrasion:y hydro_step:i upwind:e velocity_area:e
        BEDMATERIAL!
          GRAIN_CLASS! diameters:N
          MIXTURE[]! name:s volume_fraction:N
          SOIL_ASSIGNMENT! index:I soil:S type:*
          SOIL_DEF[]! d90_armored_layer name:s tau_erosion_start
            LAYER[] bottom_elevation mixture:s
        GRAVITATIONAL_TRANSPORT cycle_step:i failure_angle max_iterations:i threshold_angle
        INITIAL! file:u type:*
        PARAMETER! control_volume_factor control_volume_thickness control_volume_type:e create_new_layers:o density
          & max_dz_table max_layer_thickness min_theta_critic porosity wetting_fraction
        SOURCE
          EXTERNAL_SOURCE[] cross_section:s dredge_level dredge_trigger_height erode_below_fixed_bed:b file:u
            & grain_classes:I maximum_dredge_rate mixture:s name:s print_volumes:y type:*
        SUSPENDED_LOAD
          BOUNDARY[]! file:u mixture:s name:s string:s type:*
          INITIAL! concentration:N file:u mixture:s type:*
          PARAMETER! concentration_type:e diffusion_factor diffusion_factor_dynamic:o exchange_type:e
            & factor_depth_reference_height factor_for_near_bed_concentration factor_m factor_n local_slope:e
            & pickup_factor scheme:e sediment_exchange:y settling_velocities:N shape_factor sink_velocity_type:e
            & tk:i transport_type_factor use_transport_type_factor:o
          SOURCE
            EXTERNAL_SOURCE[] cross_section:s file:s mixture:s name:s type:*
      OUTPUT! console_time_step output_time_step restart_time_step
        SPECIAL_OUTPUT[] ORVAextern:b Qb:y b:o c:y cross_sections:S energy_line:o h:b output_single_file:b
          & output_time_step show_gridlines:y type:* v:b variable:S write_jpeg_image_time:i wse:b A:N F:N GT:N Q:N
          & TC:N
      TIMESTEP! initial_time_step maximum_time_step start_time total_run_time CFL
    ORVAPLANE_2D[] region_name:s
      GEOMETRY! file:u type:*
        MOVABLE_BED file:u
        STRINGDEF[] name:s upstream_direction:e
      HYDRAULICS!
        BOUNDARY[] conveyance_type:e dynamic_slope:o dynamic_slope_xref file:u inflow_possible:y max_interval my
          & name:s number_of_iterations:i precision slope string_name:s type:* wall_flux:o weighting_type:e
          & wse_calc_method:e zero_velocity:b
        FRICTION! default_friction fixed_bed_d90 friction:N grain_size_friction:y index:I input_type:e
          & roughness_factor strickler_factor type:* wall_friction:o wall_friction_factor
        INITIAL! file:u h:N index:I restart_solution_time saturations_lower_upper:N saturations_z_lower_upper:N
          & type:* u:N v:N wse:N
        INNER_BOUNDARY[] file:u momentum_factor my string_name1:s string_name2:s type:*
        PARAMETER! dynamic_depth_solver:e dynamic_depth_solver_precision geo_max_angle_quadrilateral
          & geo_min_area_ratio geo_min_aspect_ratio minimum_water_depth riemann_solver:e riemann_tolerance
          & simulation_scheme:e velocity_update_partial:y
        SOURCE
          EXTERNAL_SOURCE[] element_ids:I file:s index:I name:s type:*
        TURBULENCE_MODEL boundary_gradient:o eddy_viscosity eddy_viscosity_type:e kinematic_viscosity
          & turbulence_factor type:*
      MORPHOLOGY
        APPARENT_COHESION angle_deposition_delta deposition_threshold factor_tau_suc factor_tau_suc2
          & height_above_bed inverse_apparent:b local_slope_angle_repose_cohesion saturation_threshold_deposition
        BEDLOAD
          BOUNDARY[] factor file:u fraction_boundary mixture:s name:s string_name:s type:*
          DIRECTION[] curvature_transport_factor curvature_transport_factor_type:e dynamic_prefactor:y
            & initial_radius lateral_index:I lateral_transport_exponent lateral_transport_factor
            & lateral_transport_type:e min_abs_radius min_abs_radius_use:o radius_calculation_type:e radius_static:y
            & scale_lateral_transport:e update_timestep_radius
          FORMULA! alpha bedforms_factor bedforms_index:I bedforms_type:e bedload_exponent bedload_factor
            & bedload_formula:e critical_shear_stress_calibration d30 d90 hiding_exponent local_slope_correction:e
            & power_law_a power_law_b slope_dependent_bedforms_factor slope_limit_bedforms:o theta_critical
            & theta_critical_approach:e theta_critical_hiding theta_critical_index:I
          INNER_BOUNDARY[] file:u string_name1:s string_name2:s type:*
          PARAMETER! bedload_routing_start limit_bedload_wetted:b upwind:e upwind_index:I
            & use_cell_averaged_bedload_flux:y use_real_edge_lengths:o
        BEDMATERIAL!
          FIXED_BED file:u node_ids:I type:* zb_fix
          GRAIN_CLASS! diameters:N
          MIXTURE[]! name:s volume_fraction:N
          RETENTION_MODEL alpha hs l lambda n type:*
          SOIL_ASSIGNMENT! index:I soil:S type:*
          SOIL_DEF[]! d90_armored_layer name:s tau_erosion_start
            LAYER[] bottom_elevation mixture:s
        GRAVITATIONAL_TRANSPORT angle_failure_deposited angle_failure_dry angle_failure_wetted
          & angle_wetted_criterion check_hydrostatic_stabilization:y cycle_step:i gravity_transport_on_cells:o
          & index:I max_delta_z max_iterations:i min_changed_volume only_subsurface_angle:b stabilization_height
        INITIAL! file:u restart_solution_time type:*
        PARAMETER! control_volume_factor control_volume_initial control_volume_thickness
          & control_volume_thickness_index:I control_volume_type:e create_new_layers:y density distortion_index:I
          & distortion_offset distortion_time_interval local_slope_angle_repose max_layer_thickness min_theta_critic
          & new_layer_factor porosity strong_coupling:o strong_coupling_iter:i
        SOURCE
          EXTERNAL_SOURCE[] dredge_elem_ids_redist:I dredge_height_relative dredge_level_absolute
            & dredge_node_ids_redist:I dredge_rate_max dredge_trigger_height elem_ids:I file:u index:I mixture:s
            & name:s node_ids:I type:*
        SUSPENDED_LOAD
          BOUNDARY[] file:u mixture:s name:s string_name:s type:*
          INITIAL! concentration:N file:u index:I mixture:s restart_solution_time type:*
          PARAMETER! adaption_length_factor concentration_type:e corey_shape_factor diffusion diffusion_factor
            & diffusion_factor_dynamic:y exchange_type:e factor_depth_reference_height factor_m factor_n
            & limit_pickup_to_bedload:o local_slope_correction:e number_susp_fractions:i pickup_factors:N
            & ref_conc_factor scheme:e sediment_exchange:b settling_velocities:N shear_stress_deposition_conc
            & sink_velocity_type:e theta_critical_from_bedload:y tk:i transport_type_factor
            & use_transport_type_factor:o
          SOURCE
            EXTERNAL_SOURCE[] element_ids:I file:s mixture:s name:s type:*
      OUTPUT! console_time_step reference_time:s restart_time_step
        SPECIAL_OUTPUT[] ORVAextern:y balance_values:S boundary_values:S edge_ids:I edge_values:S element_ids:I
          & element_values:S flush_all_num_steps:i format:e gridlines:o history_one_file:b ids:I
          & ids_instead_coords:y node_ids:I node_values:S output_time_step split_file:o stringdef_values:S
          & stringdefs:S threshold_wse type:* value_range:N values:N variable:S vectors:y vectors_scaling_factor
          & write_jpeg_image_time:i wse3D:o
      TIMESTEP! cycle_step:i cycle_step_file:u ignore_wave_celerity:b initial_time_step maximum_time_step
        & maximum_waterdepth minimum_time_step morph_cycle:i start_time total_run_time CFL
      VEGETATION
        BIOMASS! growth_rate lambda_1 lambda_2 maximum_carrying_capacity time_veg_growth z_0
        FEEDBACK! ks_grain ks_veg theta_critic_grain theta_critic_veg z_burial z_uprooting
        GROUNDWATER! maximum_distance maximum_distance_increase minimum_points_within:i offset power_distance
          & time_Zw
        INITIAL! file:u index:I indexGrow:I restart_solution_time type:* B
        PARAMETER! only_hydro:y
    ORVASUB[] region_name:s
      BOUNDARY[] depth_min face:e file:s from_to1:N from_to2:N material_index:i name:s type:* z_reduction
      GEOMETRY! base_vector_i:N base_vector_j:N cell_size:N no_cells_i:i no_cells_j:i no_cells_k:i ref_coordinates:N
        ZONE[] inactive:o material_index:i mesh:s mesh_direction:e name:s type:* x_values:N ymax ymin z_values:N
      INITIAL! file:s restart_start_time type:* value
      MATERIAL!
        SOIL_DEF[]! kf zone:S
          RETENTION_MODEL alpha hs l lambda n type:*
          ZONE[] inactive:y material_index:i mesh:s mesh_direction:e name:s type:* x_values:N ymax ymin z_values:N
      OUTPUT! console_time_step output_time_step restart_time_step
        SPECIAL_OUTPUT[] cut_line_position_x cut_line_position_y cut_line_position_z cut_plane:e cut_plane_position
          & format:e output_time_step type:* values:N
      PARAMETER! activate_cells:o cs_factor theta_r theta_s type:*
      SOURCE
        EXTERNAL_SOURCE[] value x_values:N y_values:N
      TIMESTEP! start_time time_step total_run_time
    ORVA_EXTERN[] fixed_time_step ip:s port:i region_name:s
      BOUNDARY[] name:s type:*
    CONTROLLER[] name:s output:N output_time_step type:*
      MANIPULATED_VARIABLE[] max_change_rate name:s position:N range:N start_value steady_value time_range:N
      MONITORED_VARIABLE[] coefficients:N delay name:s position:N root_value root_value_qseries_varname:s
        & root_value_series_file:s root_value_type:e time_average_sec type:*
    COUPLINGS
      COUPLING[] average_steps:i orvante_subdomain:s check:e downstream_subdomain:s downstream_subdomain1:s
        & downstream_subdomain2:s espilon external_subdomain:s factor_bifurcation iter_exchange:i
        & momentum_factor_down momentum_factor_up print_series:b tau two_way_coupling:y type:* upstream_subdomain:s
        & upstream_subdomain1:s upstream_subdomain2:s
        BEDLOAD orvante_interface:s downstream_interface:s downstream_interface1:s downstream_interface2:s
          & external_interface:s upstream_interface:s upstream_interface1:s upstream_interface2:s
        HYDRAULICS orvante_interface:s downstream_interface:s downstream_interface1:s downstream_interface2:s
          & external_interface:s upstream_interface:s upstream_interface1:s upstream_interface2:s
        SUBSURFACE orvante_interface:s downstream_interface:s downstream_interface1:s downstream_interface2:s
          & external_interface:s upstream_interface:s upstream_interface1:s upstream_interface2:s
        SUSPENSION orvante_interface:s downstream_interface:s downstream_interface1:s downstream_interface2:s
          & external_interface:s upstream_interface:s upstream_interface1:s upstream_interface2:s
      COUPLING_LATERAL[] orvachain:s orvaplane:s c_m connections_automatic:o connections_distance
        & connections_filename:s connections_index:I damping_factor factor_adjust momentum_factor momentum_sink:e
        & print_series:y suppressed_overfall:o weir_determination_nodes:I weir_from_dyke1D:b
      PARAMETER factor_time_step_reduction ip_address:s log_network:y max_buffer:i max_time_level:i packet_size:i
        & port:i server:e
    PHYSICAL_PROPERTIES gravity rho_fluid viscosity
"""
