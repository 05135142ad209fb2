-- What triggers of the company's tables do.

-- Lets an identity go on behind the largest number, after rows that bring their own.
CREATE OR REPLACE FUNCTION quor_go_on() RETURNS trigger LANGUAGE plpgsql
  SET search_path FROM CURRENT AS $$
DECLARE
  col text := TG_ARGV[0];
  seq text := pg_get_serial_sequence(format('%I.%I', TG_TABLE_SCHEMA, TG_TABLE_NAME), col);
  largest bigint;
  last bigint;
  called boolean;
BEGIN
  EXECUTE format('SELECT max(%I) FROM %I.%I', col, TG_TABLE_SCHEMA, TG_TABLE_NAME) INTO largest;
  EXECUTE format('SELECT last_value, is_called FROM %s', seq) INTO last, called;
  IF largest > last OR (largest = last AND NOT called) THEN PERFORM setval(seq, largest); END IF;
  RETURN NULL;
END $$;
