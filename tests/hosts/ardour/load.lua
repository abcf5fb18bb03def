-- Loads the saved session in a process of its own.
dofile(os.getenv("HOSTS_SCRIPTS") .. "/common.lua")

local function run()
  start_engine()
  local session = load_session(SESSION, os.getenv("HOSTS_SNAPSHOT"))
  local processor = session:route_by_name("Synth"):nth_plugin(0)
  local plug = processor:to_insert():plugin(0)
  fact("instance", plug:name(), plug:unique_id(), plug:maker())
  fact("active", processor:active())
  ARDOUR.LuaAPI.wait_for_process_callback(8, 10000)
  fact("notes", session:route_by_name("Recorder"):to_track():playlist():n_regions())
end

run()
close()
quit()
